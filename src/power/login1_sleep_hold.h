// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "power/power_control.h"

class QDBusMessage;

namespace zentorin {

class MessageBus;

// An inhibitor lock of login1, held by an open descriptor. It is asked for without waiting: work
// goes on whatever comes of it. The lock is "block", since "delay" would put a sleep off by a few
// seconds only; who may not block sleep still blocks what an idle computer does by itself.
class Login1SleepHold : public SleepHold {
 public:
  // `bus` outlives the hold.
  explicit Login1SleepHold(MessageBus& bus);
  ~Login1SleepHold() override;

 private:
  void Ask(const QString& what);
  void Take(const QDBusMessage& answer, const QString& what);

  MessageBus& bus_;
  int descriptor_ = -1;
  QObject calls_;  // what is asked for goes with it, and its answer
};

}  // namespace zentorin
