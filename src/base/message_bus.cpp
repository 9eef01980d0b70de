// SPDX-License-Identifier: MIT
#include "base/message_bus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>
#include <utility>

#include <QCoro/QCoroSignal>

namespace zentorin {
namespace {

constexpr int kFarewellMs = 1000;

}  // namespace

MessageBus::MessageBus(QString address, std::chrono::milliseconds answerTime)
    : address_(std::move(address)),
      name_(QStringLiteral("zentorin-") + QUuid::createUuid().toString(QUuid::Id128)),
      answerTime_(answerTime) {}

// What was sent is written by a thread of Qt's own. A program that ends right after Send() makes
// sure that the bus has it: an answer from the bus itself comes after all that went before.
MessageBus::~MessageBus() {
  const QDBusConnection connection(name_);
  if (unconfirmed_ && connection.isConnected()) {
    const QDBusMessage ping = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    connection.call(ping, QDBus::Block, kFarewellMs);
  }
  QDBusConnection::disconnectFromBus(name_);
}

QString MessageBus::SystemAddress() {
  const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
  return address.isEmpty() ? QStringLiteral("unix:path=/run/dbus/system_bus_socket") : address;
}

QString MessageBus::SessionAddress() {
  QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  const QString socket = folder + QStringLiteral("/bus");
  if (folder.isEmpty() || !QFileInfo::exists(socket)) return {};
  const QByteArray escaped = QUrl::toPercentEncoding(socket, "/");
  return QStringLiteral("unix:path=") + QString::fromLatin1(escaped);
}

bool MessageBus::Open() {
  if (address_.isEmpty()) return false;
  if (QDBusConnection(name_).isConnected()) return true;
  QDBusConnection::disconnectFromBus(name_);  // what a lost connection leaves behind
  return QDBusConnection::connectToBus(address_, name_).isConnected();
}

QDBusPendingCall MessageBus::Start(const QDBusMessage& call) {
  if (!Open()) {
    return QDBusPendingCall::fromError(
        QDBusError(QDBusError::Disconnected, QStringLiteral("no message bus")));
  }
  return QDBusConnection(name_).asyncCall(call, static_cast<int>(answerTime_.count()));
}

QCoro::Task<QDBusMessage> MessageBus::Call(QDBusMessage call) {
  QDBusPendingCallWatcher watcher(Start(call));
  // Emitted from the event loop, also for a call that has failed already.
  co_await qCoro(&watcher, &QDBusPendingCallWatcher::finished);
  co_return watcher.reply();
}

void MessageBus::Send(const QDBusMessage& call) {
  if (Open()) unconfirmed_ = QDBusConnection(name_).send(call) || unconfirmed_;
}

}  // namespace zentorin
