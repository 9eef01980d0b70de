// SPDX-License-Identifier: MIT
#pragma once

#include "download/power_control.h"

namespace zentorin {

// Power control on a system that offers none: every action is refused with a sentence.
class NoPowerControl : public PowerControl {
 public:
  QCoro::Task<PowerOutcome> Perform(QString action) override;
};

}  // namespace zentorin
