// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
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
  static constexpr std::chrono::seconds kMaxDrainTime{3};
  static constexpr std::chrono::seconds kLongestHold{10};  // of an early request's full block
  static constexpr int kSlowestRate = 100;                 // bytes a second

  using Time = std::chrono::steady_clock::time_point;
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

  // Takes a fresh handle and sets it up. `connectTo` may be null. An exchange without a handle is
  // yet to be started, or finished.
  void Start(CurlEasy handle, curl_slist* connectTo);
  CurlEasy TakeHandle() { return std::move(easy_); }  // once it has left its multi handle
  void ClearTouched() { isTouched_ = false; }

  CURL* Handle() const { return easy_.get(); }
  const QString& Host() const { return host_; }  // with its port; empty for no address to ask
  const HttpRequest& Request() const { return request_; }
  void TakeTurn() { request_.early = false; }
  QObject& Lifetime() { return lifetime_; }  // what is connected to it ends with the exchange
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

  void Finish(HttpFailure failure);  // the first one counts
  void FinishWith(CURLcode code);
  bool Answered() const { return headIsFinal_; }
  bool NeverConnected() const { return neverConnected_; }  // of a finished one
  bool BrokeOffUnanswered() const { return failure_ == HttpFailure::CutOff && headBytes_ == 0; }

  bool IsWorthDraining() const;
  void StartDraining();
  bool Draining() const { return draining_; }

  // None as long as all limits of time hold.
  HttpFailure CheckTimes(Time now);

 private:
  static size_t OnHeader(char* bytes, size_t size, size_t count, void* exchange);
  static int OnTrace(CURL* easy, curl_infotype type, char* bytes, size_t size, void* exchange);
  static size_t OnBody(char* bytes, size_t size, size_t count, void* exchange);

  void SetOptions();
  void SetRoute(curl_slist* connectTo);
  void SetHeaders();
  bool HasConnected() const;
  QString Address() const;
  void WatchSecureEnd();
  bool EndsUnannounced() const;
  bool TakeHeaderLine(QByteArrayView line);
  bool EndHead();
  bool TakeBody(QByteArrayView bytes);
  void Touch();
  bool Refuse(HttpFailure failure);
  std::optional<qint64> AnnouncedBytes() const;  // nothing when none or no number

  HttpRequest request_;
  QByteArray address_;
  QString host_;
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

  bool closedWell_ = false;  // a secure connection, by its server
  bool paused_ = false;
  bool draining_ = false;
  bool isTouched_ = false;
  bool finished_ = false;
  bool neverConnected_ = false;
  HttpFailure failure_ = HttpFailure::None;

  QObject lifetime_;
  Time startedAt_;
  Time lastByteAt_;
  Time pausedAt_;
  Time drainedAt_;
  Time measuredAt_;  // since then the rate is looked at
  qint64 measuredBytes_ = 0;
  std::coroutine_handle<> waiter_;
  Event awaited_ = Event::Head;
};

}  // namespace zentorin
