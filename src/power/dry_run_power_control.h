// SPDX-License-Identifier: MIT
#pragma once

#include "power/power_control.h"

namespace zentorin {

// Power control for people who try the program out: says what would be called and calls nothing.
class DryRunPowerControl : public PowerControl {
 public:
  // Whether the environment variable ZENTORIN_POWER asks for it. "dry-run" is the value to give,
  // but any other counts as well: a slip of the pen must not cut the power.
  static bool IsWanted();

  QCoro::Task<PowerOutcome> Perform(QString action, CancelToken cancel) override;
};

}  // namespace zentorin
