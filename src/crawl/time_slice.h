// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>

#include <QCoro/QCoroTask>

#include "base/wait.h"

namespace zentorin {

// How long a loop has kept the event loop waiting. A loop asks at every step and rests when its
// slice is over, so that input stays live while short steps are not slowed down.
class TimeSlice {
 public:
  TimeSlice() { timer_.start(); }

  bool Over() const { return timer_.hasExpired(kSliceMs); }
  QCoro::Task<void> Rest() {
    co_await YieldToEventLoop();
    timer_.start();
  }

 private:
  static constexpr int kSliceMs = 15;

  QElapsedTimer timer_;
};

}  // namespace zentorin
