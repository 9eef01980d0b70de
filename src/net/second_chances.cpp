// SPDX-License-Identifier: MIT
#include "net/second_chances.h"

#include <algorithm>
#include <array>

#include "base/activity.h"
#include "base/wait.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

QCoro::Task<bool> SecondChances::Pause() {
  constexpr int kLaterPauses = 3;  // times the first one
  const std::chrono::milliseconds pause = choices_.firstPause * (used_ == 0 ? 1 : kLaterPauses);
  ++used_;
  const double seconds = std::chrono::duration<double>(pause).count();
  activity_.SetWaiting(u"%1 秒後に再試行します（%2 回目）"_s.arg(seconds).arg(used_));
  const bool undisturbed = co_await SleepUnlessCancelled(cancel_, pause);
  activity_.SetWaiting({});
  co_return undisturbed;
}

bool MayPass(HttpFailure failure, int httpStatus) {
  constexpr std::array kPassing = {408, 425, 429, 500, 502, 503, 504};
  if (failure != HttpFailure::None) return !IsFinal(failure);
  return std::ranges::find(kPassing, httpStatus) != kPassing.end();
}

}  // namespace zentorin
