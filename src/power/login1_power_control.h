// SPDX-License-Identifier: MIT
#pragma once

#include "power/power_control.h"

class QDBusMessage;

namespace zentorin {

class MessageBus;
struct PowerAction;

// Power control by org.freedesktop.login1: asks whether the action is allowed, then calls by force.
// Whatever would need the user's authorisation is refused, as nobody may be there.
class Login1PowerControl : public PowerControl {
 public:
  explicit Login1PowerControl(MessageBus& bus) : bus_(bus) {}

  QCoro::Task<PowerOutcome> Perform(QString action, CancelToken cancel) override;
  std::unique_ptr<SleepHold> KeepAwake() override;

 private:
  struct Attempt;

  // Each answers why the action cannot be performed; empty when it was.
  QCoro::Task<QString> ActOnComputer(Attempt& attempt);
  QCoro::Task<QString> EndSession(Attempt& attempt);
  // The reply or the error; an invalid message when a cancel came before it.
  QCoro::Task<QDBusMessage> Ask(const Attempt& attempt, QDBusMessage call);
  QCoro::Task<QDBusMessage> Act(Attempt& attempt, QDBusMessage call);
  QCoro::Task<QDBusMessage> ForcedCall(Attempt& attempt);
  QCoro::Task<QDBusMessage> OwnSession(const Attempt& attempt);  // holds its name, or the error
  QString Fault(const QDBusMessage& reply) const;

  MessageBus& bus_;
};

}  // namespace zentorin
