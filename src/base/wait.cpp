// SPDX-License-Identifier: MIT
#include "base/wait.h"

#include <QTimer>

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTimer>

#include "base/run_state.h"

namespace zentorin {
namespace {

// Ends with the first of two events: the time is over, or a cancel is requested.
class Sleep : public QObject {
  Q_OBJECT

 public:
  Sleep(RunState& state, std::chrono::milliseconds time) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &Sleep::Over);
    connect(&state, &RunState::Cancelled, this, &Sleep::Over);
    timer_.start(time);
  }

 Q_SIGNALS:
  void Over();

 private:
  QTimer timer_;
};

}  // namespace

QCoro::Task<bool> SleepUnlessCancelled(RunState& state, std::chrono::milliseconds time) {
  if (!state.CancelRequested()) {
    Sleep sleep(state, time);
    co_await qCoro(&sleep, &Sleep::Over);
  }
  co_return !state.CancelRequested();
}

QCoro::Task<void> YieldToEventLoop() {
  co_await QCoro::sleepFor(std::chrono::milliseconds(0));
}

}  // namespace zentorin

#include "wait.moc"
