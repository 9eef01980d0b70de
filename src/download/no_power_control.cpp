// SPDX-License-Identifier: MIT
#include "download/no_power_control.h"

#include "download/power_action.h"

namespace zentorin {

QCoro::Task<PowerOutcome> NoPowerControl::Perform(QString action) {
  PowerOutcome outcome;
  if (FindPowerAction(action) != nullptr) {
    outcome.text = QStringLiteral("このシステムでは「%1」を実行できません。").arg(action);
  }
  co_return outcome;
}

}  // namespace zentorin
