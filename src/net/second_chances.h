// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "net/fetch_choices.h"
#include "net/http_engine.h"

namespace zentorin {

class Activity;

// The further tries of one address, with a pause before each.
class SecondChances {
 public:
  SecondChances(const FetchChoices& choices, Activity& activity, CancelToken cancel)
      : choices_(choices), activity_(activity), cancel_(std::move(cancel)), most_(choices.tries) {}

  // What was asked beside other requests gets one in any case: they may have been in its way.
  void AllowForCompany() { most_ = std::max(most_, choices_.connectionsPerHost > 1 ? 1 : 0); }

  bool Left() const { return used_ < most_; }
  int Used() const { return used_; }
  QCoro::Task<bool> Pause();  // false when it was cancelled

 private:
  const FetchChoices& choices_;
  Activity& activity_;
  CancelToken cancel_;
  int most_;
  int used_ = 0;
};

// Whether the same request may get its answer at another moment.
bool MayPass(HttpFailure failure, int httpStatus);

}  // namespace zentorin
