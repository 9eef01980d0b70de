// SPDX-License-Identifier: MIT
#include "base/wait.h"

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTimer>

namespace zentorin {

FirstEvent::FirstEvent(std::chrono::milliseconds time) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &FirstEvent::Came);
  timer_.start(time);
}

void FirstEvent::Add(const CancelToken& cancel) {
  cancel.OnCancel(this, [this] { Q_EMIT Came(); });
}

QCoro::Task<void> FirstEvent::Wait() {
  co_await qCoro(this, &FirstEvent::Came);
}

QCoro::Task<bool> SleepUnlessCancelled(CancelToken cancel, std::chrono::milliseconds time) {
  if (!cancel.Cancelled()) {
    FirstEvent end(time);
    end.Add(cancel);
    co_await end.Wait();
  }
  co_return !cancel.Cancelled();
}

QCoro::Task<void> YieldToEventLoop() {
  co_await QCoro::sleepFor(std::chrono::milliseconds(0));
}

}  // namespace zentorin
