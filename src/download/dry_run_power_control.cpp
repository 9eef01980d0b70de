// SPDX-License-Identifier: MIT
#include "download/dry_run_power_control.h"

#include "download/power_action.h"

namespace zentorin {

bool DryRunPowerControl::IsWanted() {
  return !qEnvironmentVariableIsEmpty("ZENTORIN_POWER");
}

QCoro::Task<PowerOutcome> DryRunPowerControl::Perform(QString action, const RunState& /*state*/) {
  PowerOutcome outcome;
  const PowerAction* const wanted = FindPowerAction(action);
  if (wanted != nullptr) {
    outcome.done = outcome.tried = true;
    outcome.text = QStringLiteral("「%1」は試行のため実行しません（呼び出し: %2）。")
                       .arg(action, wanted->CallText());
  }
  co_return outcome;
}

}  // namespace zentorin
