// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

struct PowerOutcome {
  bool done = false;
  bool cancelled = false;  // the user stopped it on the way
  bool tried = false;      // a dry run: nothing but the text has come of it
  QString text;            // a sentence for the user; may be empty
};

// As long as it lives, the computer is asked not to go to sleep by itself.
class SleepHold {
 public:
  SleepHold() = default;
  SleepHold(const SleepHold&) = delete;
  SleepHold& operator=(const SleepHold&) = delete;
  virtual ~SleepHold() = default;
};

// Puts the computer into a power state, and keeps it out of one.
class PowerControl {
 public:
  PowerControl() = default;
  PowerControl(const PowerControl&) = delete;
  PowerControl& operator=(const PowerControl&) = delete;
  virtual ~PowerControl() = default;

  // `action`: "スタンバイ", "休止", "ログオフ", "再起動" or "シャットダウン"; any other text does
  // nothing. A cancel ends it at once; what has been asked of the system by then is not taken back.
  virtual QCoro::Task<PowerOutcome> Perform(QString action, CancelToken cancel) = 0;

  // Null where the system knows no such thing.
  virtual std::unique_ptr<SleepHold> KeepAwake() { return nullptr; }
};

}  // namespace zentorin
