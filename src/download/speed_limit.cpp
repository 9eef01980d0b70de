// SPDX-License-Identifier: MIT
#include "download/speed_limit.h"

#include <algorithm>

#include "base/wait.h"

namespace zentorin {

QCoro::Task<bool> SpeedLimit::Spend(qint64 bytes, CancelToken cancel) {
  using Clock = std::chrono::steady_clock;
  if (kilobytesPerSecond_ <= 0) co_return true;
  // A thousand bytes a second are a byte a millisecond.
  const auto cost = std::chrono::milliseconds(bytes / kilobytesPerSecond_);
  free_ = std::max(free_, Clock::now()) + cost;
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(free_ - Clock::now());
  const bool undisturbed = co_await SleepUnlessCancelled(cancel, wait);
  co_return undisturbed;
}

}  // namespace zentorin
