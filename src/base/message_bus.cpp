// SPDX-License-Identifier: MIT
#include "base/message_bus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QPointer>
#include <QSocketNotifier>
#include <QUrl>
#include <QUuid>
#include <utility>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kFarewellTime(1000);

}  // namespace

struct MessageBus::Waiting {
  QDBusMessage call;
  QPointer<QObject> receiver;
  Answer told;  // none when the answer does not matter
};

MessageBus::MessageBus(QString address, std::chrono::milliseconds answerTime)
    : address_(std::move(address)),
      name_(u"zentorin-"_s + QUuid::createUuid().toString(QUuid::Id128)),
      answerTime_(answerTime) {
  bound_.setSingleShot(true);
  connect(&bound_, &QTimer::timeout, this, &MessageBus::EndGreeting);
}

// A program that ends right after Send() makes sure that the bus has the call. What was sent is
// written by a thread of Qt's own: an answer from the bus itself comes after all that went before.
MessageBus::~MessageBus() {
  std::erase_if(waiting_, [](const Waiting& waiting) { return waiting.told != nullptr; });
  if (greeting_ && !waiting_.empty()) greeting_->WaitFor(kFarewellTime);
  EndGreeting();
  if (unconfirmed_ && IsOpen()) {
    const QDBusMessage ping =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    QDBusConnection(name_).call(ping, QDBus::Block, static_cast<int>(kFarewellTime.count()));
  }
  QDBusConnection::disconnectFromBus(name_);
}

QString MessageBus::SystemAddress() {
  const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
  return address.isEmpty() ? u"unix:path=/run/dbus/system_bus_socket"_s : address;
}

QString MessageBus::SessionAddress() {
  QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString socket = folder + u"/bus"_s;
  if (folder.isEmpty() || !QFileInfo::exists(socket)) return {};
  const QByteArray escaped = QUrl::toPercentEncoding(socket, "/");
  return u"unix:path="_s + QString::fromLatin1(escaped);
}

void MessageBus::Ask(const QDBusMessage& call, QObject* receiver, const Answer& told) {
  Take({.call = call, .receiver = receiver, .told = told});
}

void MessageBus::Send(const QDBusMessage& call) {
  Take({.call = call, .receiver = {}, .told = {}});
}

bool MessageBus::IsOpen() const {
  return QDBusConnection(name_).isConnected();
}

void MessageBus::Take(const Waiting& waiting) {
  if (IsOpen()) {
    Issue(waiting);
  } else {
    waiting_.push_back(waiting);
    Open();
  }
}

void MessageBus::Open() {
  if (greeting_) return;
  greeting_ = std::make_unique<BusGreeting>(address_);
  if (greeting_->Current() != BusGreeting::State::Waiting) {
    EndGreeting();
    return;
  }
  notifier_ = new QSocketNotifier(greeting_->Socket(), QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, &MessageBus::GoOn);
  bound_.start(answerTime_);
}

void MessageBus::GoOn() {
  greeting_->Advance();
  if (greeting_->Current() != BusGreeting::State::Waiting) EndGreeting();
}

// With the connection open or known to be missing, the calls go their way. Opening it is a matter
// of moments now: the bus has answered the same words just before.
void MessageBus::EndGreeting() {
  bound_.stop();
  if (notifier_ != nullptr) {
    notifier_->setEnabled(false);
    std::exchange(notifier_, nullptr)->deleteLater();  // this may be its own signal
  }
  if (const auto greeting = std::exchange(greeting_, nullptr);
      greeting && greeting->Current() == BusGreeting::State::Answered) {
    QDBusConnection::disconnectFromBus(name_);  // what a lost connection leaves behind
    QDBusConnection::connectToBus(greeting->Address(), name_);
  }
  for (const Waiting& waiting : std::exchange(waiting_, {})) Issue(waiting);
}

void MessageBus::Issue(const Waiting& waiting) {
  QDBusConnection connection(name_);
  const bool open = connection.isConnected();
  if (!waiting.told) {
    unconfirmed_ = (open && connection.send(waiting.call)) || unconfirmed_;
    return;
  }
  if (waiting.receiver == nullptr) return;
  const QDBusError absent(QDBusError::Disconnected, u"no message bus"_s);
  const QDBusPendingCall pending =
      open ? connection.asyncCall(waiting.call, static_cast<int>(answerTime_.count()))
           : QDBusPendingCall::fromError(absent);
  // Emitted from the event loop, also for a call that has failed already.
  auto* const watcher = new QDBusPendingCallWatcher(pending, waiting.receiver);
  connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, told = waiting.told] {
    watcher->deleteLater();
    told(watcher->reply());
  });
}

}  // namespace zentorin
