// SPDX-License-Identifier: MIT
#include "download/login1_sleep_hold.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <unistd.h>

#include "base/message_bus.h"
#include "download/login1_names.h"

namespace zentorin {
namespace {

const QString& OnlyWhenIdle() {
  static const QString what = QStringLiteral("idle");
  return what;
}

}  // namespace

Login1SleepHold::Login1SleepHold(MessageBus& bus) : bus_(bus) {
  Ask(QStringLiteral("sleep:") + OnlyWhenIdle());
}

Login1SleepHold::~Login1SleepHold() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Login1SleepHold::Ask(const QString& what) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(login1::Service(), login1::ManagerPath(),
                                     login1::ManagerInterface(), QStringLiteral("Inhibit"));
  call << what << QStringLiteral("Zentorin") << QStringLiteral("一括ダウンロードの実行中")
       << QStringLiteral("block");
  bus_.Ask(call, &calls_, [this, what](const QDBusMessage& reply) { Take(reply, what); });
}

void Login1SleepHold::Take(const QDBusMessage& answer, const QString& what) {
  const QDBusReply<QDBusUnixFileDescriptor> reply = answer;
  if (reply.isValid()) {
    // The reply keeps its own descriptor open as long as any copy of it lives.
    descriptor_ = fcntl(reply.value().fileDescriptor(), F_DUPFD_CLOEXEC, 0);
    return;
  }
  const bool refused = reply.error().type() == QDBusError::AccessDenied ||
                       reply.error().name() == login1::AuthorisationError();
  if (refused && what != OnlyWhenIdle()) Ask(OnlyWhenIdle());
}

}  // namespace zentorin
