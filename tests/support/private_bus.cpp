// SPDX-License-Identifier: MIT
#include "tests/support/private_bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <array>

#include <QCoro/QCoroSignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kConnection = "played services";
const QStringList kServices = {"org.freedesktop.login1", "org.freedesktop.Notifications",
                               "org.freedesktop.FileManager1"};

// A bus with its socket in the test's folder and no service that it could start.
constexpr const char* kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}  // namespace

PrivateBus::PrivateBus() {
  const QString configuration = QString::fromLatin1(kConfiguration).arg(dir_.Path("bus"));
  const QString file = dir_.Write("bus.conf", configuration.toUtf8());
  daemon_.start("dbus-daemon", {"--config-file=" + file, "--nofork", "--print-address=1"});
  while (!daemon_.canReadLine() && daemon_.waitForReadyRead()) {
  }
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  QDBusConnection bus = QDBusConnection::connectToBus(address_, kConnection);
  EXPECT_TRUE(bus.isConnected()) << daemon_.errorString().toStdString()
                                 << daemon_.readAllStandardError().toStdString();
  bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
  for (const QString& service : kServices) EXPECT_TRUE(bus.registerService(service));
}

PrivateBus::~PrivateBus() {
  QDBusConnection(kConnection).unregisterObject("/", QDBusConnection::UnregisterTree);
  QDBusConnection::disconnectFromBus(kConnection);
  daemon_.kill();
  daemon_.waitForFinished();
}

void PrivateBus::Withdraw() {
  for (const QString& service : kServices) QDBusConnection(kConnection).unregisterService(service);
}

void PrivateBus::WaitForCall(const QString& call) {
  while (!calls.contains(call)) {
    const auto more = QCoro::waitFor(qCoro(this, &PrivateBus::Called, std::chrono::seconds(30)));
    ASSERT_TRUE(more) << call.toStdString() << " is not in " << calls.join(u' ').toStdString();
  }
}

void PrivateBus::Note(const QString& call) {
  calls.append(call);
  Q_EMIT Called();
}

bool PrivateBus::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const QString method = message.member();
  QStringList arguments;
  for (const QVariant& argument : message.arguments()) arguments.append(argument.toString());
  Note(u"%1(%2)"_s.arg(method, arguments.join(u',')));
  if (silent.contains(method)) return true;
  QStringList& failures = errors[method];
  if (!failures.isEmpty()) {
    return connection.send(message.createErrorReply(failures.takeFirst(), "a reason"));
  }
  const QVariant answer = AnswerTo(message);
  return connection.send(answer.isValid() ? message.createReply(answer) : message.createReply());
}

QVariant PrivateBus::AnswerTo(const QDBusMessage& message) {
  const QString method = message.member();
  if (answers.contains(method)) return answers[method];
  if (method.startsWith("Can")) return "yes";
  if (method == "Inhibit") return InhibitorLock();
  if (method == "Notify") return quint32{1};
  if (method == "GetSessionByPID" || method == "GetSession") {
    return QVariant::fromValue(QDBusObjectPath("/org/freedesktop/login1/session/_37"));
  }
  if (method == "Get" && message.path().endsWith("/_37")) {
    return QVariant::fromValue(QDBusVariant("7"));
  }
  return {};
}

// The end of a pipe, as login1 gives it away: the other end reports when the last copy is closed.
QVariant PrivateBus::InhibitorLock() {
  std::array<int, 2> ends = {-1, -1};
  EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  lock_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
  QObject::connect(lock_.get(), &QSocketNotifier::activated, this, [this, end = ends[0]] {
    Note("released");
    lock_->setEnabled(false);
    close(end);
  });
  const QDBusUnixFileDescriptor given(ends[1]);
  close(ends[1]);
  return QVariant::fromValue(given);
}

}  // namespace zentorin::test
