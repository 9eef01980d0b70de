// SPDX-License-Identifier: MIT
#include "base/run_state.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void RunState::RequestCancel() {
  if (cancelRequested_) return;
  cancelRequested_ = true;
  Q_EMIT Cancelled();
}

bool RunState::IsBatch() const {
  return runMode_ == u"一括"_s;
}

}  // namespace zentorin
