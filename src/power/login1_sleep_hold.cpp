// SPDX-License-Identifier: MIT
#include "power/login1_sleep_hold.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>

#include "base/message_bus.h"
#include "base/product_name.h"
#include "power/power_action.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString& OnlyWhenIdle() {
  static const QString what = u"idle"_s;
  return what;
}

}  // namespace

// The lock is "block", since "delay" would put a sleep off by a few seconds only. Who may not block
// sleep still blocks what an idle computer does by itself.
Login1SleepHold::Login1SleepHold(MessageBus& bus) : bus_(bus) {
  Ask(u"sleep:"_s + OnlyWhenIdle());
}

void Login1SleepHold::Ask(const QString& what) {
  QDBusMessage call = QDBusMessage::createMethodCall(login1::Service(), login1::ManagerPath(),
                                                     login1::ManagerInterface(), u"Inhibit"_s);
  call << what << ProductName() << u"一括ダウンロードの実行中"_s << u"block"_s;
  bus_.Ask(call, &calls_, [this, what](const QDBusMessage& reply) { Take(reply, what); });
}

void Login1SleepHold::Take(const QDBusMessage& answer, const QString& what) {
  const QDBusReply<QDBusUnixFileDescriptor> reply = answer;
  if (reply.isValid()) {
    // The reply keeps its own descriptor open as long as any copy of it lives.
    lock_ = Descriptor(fcntl(reply.value().fileDescriptor(), F_DUPFD_CLOEXEC, 0));
    return;
  }
  const bool refused = reply.error().type() == QDBusError::AccessDenied ||
                       reply.error().name() == login1::AuthorisationError();
  if (refused && what != OnlyWhenIdle()) Ask(OnlyWhenIdle());
}

}  // namespace zentorin
