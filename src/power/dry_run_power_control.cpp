// SPDX-License-Identifier: MIT
#include "power/dry_run_power_control.h"

#include "power/power_action.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

bool DryRunPowerControl::IsWanted() {
  return !qEnvironmentVariableIsEmpty("ZENTORIN_POWER");
}

QCoro::Task<PowerOutcome> DryRunPowerControl::Perform(QString action, CancelToken /*cancel*/) {
  PowerOutcome outcome;
  const PowerAction* const wanted = FindPowerAction(action);
  if (wanted != nullptr) {
    outcome.done = outcome.tried = true;
    outcome.text =
        u"「%1」は試行のため実行しません（呼び出し: %2）。"_s.arg(action, wanted->CallText());
  }
  co_return outcome;
}

}  // namespace zentorin
