// SPDX-License-Identifier: MIT
#include "base/wait.h"

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTimer>

#include "base/run_state.h"

namespace zentorin {

FirstEvent::FirstEvent(std::chrono::milliseconds time) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &FirstEvent::Came);
  timer_.start(time);
}

QCoro::Task<void> FirstEvent::Wait() {
  co_await qCoro(this, &FirstEvent::Came);
}

QCoro::Task<bool> SleepUnlessCancelled(RunState& state, std::chrono::milliseconds time) {
  if (!state.CancelRequested()) {
    FirstEvent end(time);
    end.Add(state, &RunState::Cancelled);
    co_await end.Wait();
  }
  co_return !state.CancelRequested();
}

QCoro::Task<void> YieldToEventLoop() {
  co_await QCoro::sleepFor(std::chrono::milliseconds(0));
}

}  // namespace zentorin
