// SPDX-License-Identifier: MIT
#include "base/run_state.h"

namespace zentorin {

void RunState::RequestCancel() {
  if (cancelRequested_) return;
  cancelRequested_ = true;
  Q_EMIT Cancelled();
}

bool RunState::IsBatch() const {
  return runMode_ == QStringLiteral("一括");
}

}  // namespace zentorin
