// SPDX-License-Identifier: MIT
#include "base/cancel_token.h"

namespace zentorin {

void CancelToken::OnCancel(QObject* context, std::function<void()> stop) const {
  if (state_) QObject::connect(state_.get(), &CancelState::Cancelled, context, std::move(stop));
}

void CancelSource::Cancel() {
  // What ends may drop the source.
  const std::shared_ptr<CancelState> state = state_;
  if (state->cancelled) return;
  state->cancelled = true;
  Q_EMIT state->Cancelled();
}

}  // namespace zentorin
