// SPDX-License-Identifier: MIT
#pragma once

#include <coroutine>
#include <utility>

namespace zentorin {

// Lets one coroutine wait until another one has something for it. What was set before the wait
// counts; a wait takes it back. The waiting coroutine goes on inside Set().
class AsyncEvent {
 public:
  struct Waiter {
    AsyncEvent& event;

    bool await_ready() const { return event.isSet_; }
    void await_suspend(std::coroutine_handle<> waiter) const { event.waiter_ = waiter; }
    void await_resume() const { event.isSet_ = false; }
  };

  AsyncEvent() = default;
  AsyncEvent(const AsyncEvent&) = delete;
  AsyncEvent& operator=(const AsyncEvent&) = delete;
  ~AsyncEvent() = default;

  Waiter Wait() { return {.event = *this}; }
  void Set() {
    isSet_ = true;
    if (waiter_) std::exchange(waiter_, nullptr).resume();
  }

 private:
  bool isSet_ = false;
  std::coroutine_handle<> waiter_;
};

}  // namespace zentorin
