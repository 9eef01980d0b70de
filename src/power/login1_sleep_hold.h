// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "base/descriptor.h"
#include "power/power_control.h"

class QDBusMessage;

namespace zentorin {

class MessageBus;

// An inhibitor lock of login1, held by an open descriptor. It is asked for without waiting: work
// goes on whatever comes of it.
class Login1SleepHold : public SleepHold {
 public:
  explicit Login1SleepHold(MessageBus& bus);

 private:
  void Ask(const QString& what);
  void Take(const QDBusMessage& answer, const QString& what);

  MessageBus& bus_;
  Descriptor lock_;
  QObject calls_;  // what is asked for goes with it, and its answer
};

}  // namespace zentorin
