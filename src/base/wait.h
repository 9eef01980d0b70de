// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

// Ends a wait with the first of several events; later ones go away with the object, where a wait on
// the signal itself would be resumed again. What came before Wait() is not seen.
class FirstEvent : public QObject {
  Q_OBJECT

 public:
  FirstEvent() = default;
  explicit FirstEvent(std::chrono::milliseconds time);

  template <typename Sender>
  void Add(const Sender& sender, void (Sender::*signal)()) {
    connect(&sender, signal, this, &FirstEvent::Came);
  }
  void Add(const CancelToken& cancel);
  QCoro::Task<void> Wait();

 Q_SIGNALS:
  void Came();

 private:
  QTimer timer_;
};

// Answers false, at once, when a cancel is or was requested.
QCoro::Task<bool> SleepUnlessCancelled(CancelToken cancel, std::chrono::milliseconds time);

QCoro::Task<void> YieldToEventLoop();  // input, timers and sockets are served

}  // namespace zentorin
