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

// One request as libcurl sees it: its handle and options, and what came so far. The callbacks only
// append and count; whoever drives libcurl looks at the result when the call has returned. The
// loop and the transfer that was handed out share it, because either may go first.
class CurlExchange {
 public:
  // Headers of one request over all its redirects.
  static constexpr qsizetype kMaxHeadBytes = 262'144;
  // Rest of a dropped body that is still read so that its connection can be used again.
  static constexpr qint64 kMaxDrainBytes = 65'536;

  enum class Event { Head, Block };

  // Suspends the one coroutine that waits for an event.
  struct Waiter {
    CurlExchange& exchange;
    Event event;

    bool await_ready() const { return exchange.Has(event); }
    void await_suspend(std::coroutine_handle<> coroutine);
    void await_resume() const {}
  };

  // `touched` gets the handle when a callback brought something; it must outlive the transfer.
  CurlExchange(HttpRequest request, std::vector<CURL*>& touched);

  // Makes the handle. False when the address cannot be asked; the exchange is finished then.
  // `connectTo` (may be null) must outlive the transfer.
  bool Prepare(curl_slist* connectTo);
  void ClearTouched() { isTouched_ = false; }

  CURL* Handle() const { return easy_.get(); }
  const HttpRequest& Request() const { return request_; }
  const HttpHead& Head() const { return head_; }
  HttpFailure Failure() const { return failure_; }
  const QString& FailureText() const { return failureText_; }
  bool Finished() const { return finished_; }

  bool Has(Event event) const;
  Waiter Until(Event event) { return {.exchange = *this, .event = event}; }
  bool HasWaiter() const { return waiter_ != nullptr; }
  // The coroutine to resume, when what it waits for is there; null otherwise.
  std::coroutine_handle<> TakeReadyWaiter();

  QByteArray TakeBlock();

  // A whole block lies here and nobody wants it.
  bool ShouldPause() const;
  void SetPaused(bool paused);
  bool Paused() const { return paused_; }

  // The end. The first one counts; the handle is freed, so it must have left its multi handle.
  void Finish(HttpFailure failure, const QString& text);
  void FinishWith(CURLcode code);

  // Whether the rest of the body is small enough to be read for nothing.
  bool IsWorthDraining() const;
  void StartDraining();
  bool Draining() const { return draining_; }

  // The driver starts this timer and, when it fires, asks how much of the idle time is left: zero
  // or less means that it is over.
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
  bool Refuse(HttpFailure failure, const char* text);
  // Content-Length of the final answer; nothing when it has none or it is no number.
  std::optional<qint64> AnnouncedBytes() const;

  HttpRequest request_;
  std::vector<CURL*>* touched_;
  CurlEasy easy_;
  CurlList requestHeaders_;
  QByteArray errorText_;

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
  QString failureText_;

  QTimer deadline_;
  std::chrono::steady_clock::time_point lastByteAt_;
  std::coroutine_handle<> waiter_;
  Event awaited_ = Event::Head;
};

}  // namespace zentorin
