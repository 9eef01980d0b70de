// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <chrono>
#include <coroutine>
#include <deque>
#include <optional>
#include <vector>

#include "net/curl_handles.h"
#include "net/http_engine.h"

namespace zentorin {

// One request as libcurl sees it. The callbacks only append and count. The loop and the transfer
// share it, because either may go first.
class CurlExchange {
 public:
  static constexpr qsizetype kMaxHeadBytes = 262'144;  // over all redirects
  static constexpr qint64 kMaxDrainBytes = 65'536;     // a dropped body's rest that is still read

  enum class Event { Head, Block };

  struct Waiter {
    CurlExchange& exchange;
    Event event;

    bool await_ready() const { return exchange.Has(event); }
    void await_suspend(std::coroutine_handle<> coroutine);
    void await_resume() const {}
  };

  // `touched` gets the handle when a callback brought something.
  CurlExchange(HttpRequest request, std::vector<CURL*>& touched);

  // False when the address cannot be asked; the exchange is finished then. `connectTo` may be null.
  bool Prepare(curl_slist* connectTo);
  void ClearTouched() { isTouched_ = false; }

  CURL* Handle() const { return easy_.get(); }
  const HttpRequest& Request() const { return request_; }
  const HttpHead& Head() const { return head_; }
  HttpFailure Failure() const { return failure_; }
  bool Finished() const { return finished_; }

  bool Has(Event event) const;
  Waiter Until(Event event) { return {.exchange = *this, .event = event}; }
  bool HasWaiter() const { return waiter_ != nullptr; }
  std::coroutine_handle<> TakeReadyWaiter();  // null when what it waits for is not there

  QByteArray TakeBlock();

  bool ShouldPause() const;
  void SetPaused(bool paused);
  bool Paused() const { return paused_; }

  // The first one counts. Frees the handle, which must have left its multi handle.
  void Finish(HttpFailure failure);
  void FinishWith(CURLcode code);

  bool IsWorthDraining() const;
  void StartDraining();
  bool Draining() const { return draining_; }

  // Single-shot, the driver's to start; when it fires, zero or less idle time left means the end.
  QTimer& Deadline() { return deadline_; }
  std::chrono::milliseconds IdleTimeLeft() const;

 private:
  static size_t OnHeader(char* bytes, size_t size, size_t count, void* exchange);
  static size_t OnBody(char* bytes, size_t size, size_t count, void* exchange);

  void SetOptions(const QByteArray& address);
  void SetRoute(curl_slist* connectTo);
  void SetHeaders();
  bool TakeHeaderLine(QByteArrayView line);
  bool EndHead();
  bool TakeBody(QByteArrayView bytes);
  void Touch();
  bool Refuse(HttpFailure failure);
  std::optional<qint64> AnnouncedBytes() const;  // nothing when none or no number

  HttpRequest request_;
  std::vector<CURL*>* touched_;
  CurlEasy easy_;
  CurlList requestHeaders_;

  HttpHead head_;
  bool headIsFinal_ = false;
  qsizetype headBytes_ = 0;
  std::deque<QByteArray> blocks_;  // whole ones
  QByteArray rest_;                // the block that is being filled
  qint64 bodyBytes_ = 0;
  qint64 drainedBytes_ = 0;

  bool paused_ = false;
  bool draining_ = false;
  bool isTouched_ = false;
  bool finished_ = false;
  HttpFailure failure_ = HttpFailure::None;

  QTimer deadline_;
  std::chrono::steady_clock::time_point lastByteAt_;
  std::coroutine_handle<> waiter_;
  Event awaited_ = Event::Head;
};

}  // namespace zentorin
