// SPDX-License-Identifier: MIT
#include "base/wait.h"

#include <QTimer>

#include <QCoro/QCoroSignal>

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
  QTimer turn;
  turn.setSingleShot(true);
  turn.start(0);
  co_await qCoro(&turn, &QTimer::timeout);
}

}  // namespace zentorin

#include "wait.moc"
