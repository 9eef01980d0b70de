// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QCoro/QCoroTask>

namespace zentorin {

class RunState;

// Sleeps on the event loop. Ends early, and answers false, when a cancel is requested before the
// time is over (also when it was requested before the call). `state` must outlive the task.
QCoro::Task<bool> SleepUnlessCancelled(RunState& state, std::chrono::milliseconds time);

// Lets the event loop run once: pending input, timers and sockets are served before it returns.
QCoro::Task<void> YieldToEventLoop();

}  // namespace zentorin
