// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>

#include <QCoro/QCoroTask>

namespace zentorin {

class RunState;

// Ends a wait with the first of several events: its time is over, a signal that was added, or a
// Came() that somebody emits. What comes after the first one goes away with the object; a wait on
// the signal itself, with a time of its own, would be resumed a second time by it. What came before
// Wait() is not seen by it: without a time it would then wait for ever.
class FirstEvent : public QObject {
  Q_OBJECT

 public:
  FirstEvent() = default;
  explicit FirstEvent(std::chrono::milliseconds time);

  // `sender` outlives the object.
  template <typename Sender>
  void Add(const Sender& sender, void (Sender::*signal)()) {
    connect(&sender, signal, this, &FirstEvent::Came);
  }
  QCoro::Task<void> Wait();

 Q_SIGNALS:
  void Came();

 private:
  QTimer timer_;
};

// Sleeps on the event loop. Ends early, and answers false, when a cancel is requested before the
// time is over (also when it was requested before the call). `state` must outlive the task.
QCoro::Task<bool> SleepUnlessCancelled(RunState& state, std::chrono::milliseconds time);

// Lets the event loop run once: pending input, timers and sockets are served before it returns.
QCoro::Task<void> YieldToEventLoop();

}  // namespace zentorin
