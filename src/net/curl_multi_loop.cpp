// SPDX-License-Identifier: MIT
#include "net/curl_multi_loop.h"

#include <QPointer>
#include <QSocketNotifier>
#include <utility>

namespace zentorin {

namespace {

constexpr long kMaxIdleConnections = 64;
constexpr int kMaxDrains = 16;
constexpr std::chrono::seconds kMaxDrainTime{3};

CURLM* NewMulti() {
  // Once a process; thread-safe by the language.
  static const CURLcode initialised = curl_global_init(CURL_GLOBAL_DEFAULT);
  return initialised == CURLE_OK ? curl_multi_init() : nullptr;
}

}  // namespace

CurlMultiLoop::CurlMultiLoop(CurlList connectTo)
    : connectTo_(std::move(connectTo)), multi_(NewMulti()) {
  if (!multi_) qFatal("libcurl cannot be initialised");
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &CurlMultiLoop::OnSocket);
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &CurlMultiLoop::OnTimer);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
  curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, kMaxIdleConnections);
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] { Act(CURL_SOCKET_TIMEOUT, 0); });
  wakeUp_.setSingleShot(true);
  connect(&wakeUp_, &QTimer::timeout, this, &CurlMultiLoop::ResumeWaiters);
}

CurlMultiLoop::~CurlMultiLoop() {
  while (!running_.empty()) {
    const Exchange exchange = running_.begin()->second;
    Q_ASSERT_X(exchange->Draining(), "CurlMultiLoop", "a transfer outlives its engine");
    End(exchange, HttpFailure::Cancelled);
  }
}

std::shared_ptr<CurlExchange> CurlMultiLoop::Start(HttpRequest request) {
  auto exchange = std::make_shared<CurlExchange>(std::move(request), touched_);
  const CancelToken cancel = exchange->Request().cancel;
  if (cancel.Cancelled()) {
    exchange->Finish(HttpFailure::Cancelled);
    return exchange;
  }
  if (!exchange->Prepare(connectTo_.get())) return exchange;
  CURL* handle = exchange->Handle();
  if (curl_multi_add_handle(multi_.get(), handle) != CURLM_OK) {
    exchange->Finish(HttpFailure::NoConnection);
    return exchange;
  }
  running_.emplace(handle, exchange);
  // The timer goes with the exchange, and the connection with the timer.
  cancel.OnCancel(&exchange->Deadline(), [this, weak = std::weak_ptr(exchange)] {
    const Exchange cancelled = weak.lock();
    if (cancelled && !cancelled->Finished()) End(cancelled, HttpFailure::Cancelled);
  });
  connect(&exchange->Deadline(), &QTimer::timeout, this, [this, handle] { CheckDeadline(handle); });
  const std::chrono::milliseconds idle = exchange->Request().idleTimeout;
  if (idle.count() > 0) exchange->Deadline().start(idle);
  return exchange;
}

void CurlMultiLoop::Release(const std::shared_ptr<CurlExchange>& exchange) {
  if (exchange->Finished()) return;
  // A coroutine that still waits is told; it holds the exchange, not the transfer.
  if (!exchange->HasWaiter() && exchange->IsWorthDraining() && drains_ < kMaxDrains) {
    ++drains_;
    exchange->StartDraining();
    exchange->Deadline().start(kMaxDrainTime);
    return;
  }
  End(exchange, HttpFailure::Cancelled);
}

void CurlMultiLoop::MakeRoom(CurlExchange& exchange) {
  if (exchange.Paused() && !exchange.Finished() && !exchange.Has(CurlExchange::Event::Block)) {
    exchange.SetPaused(false);
  }
}

int CurlMultiLoop::OnSocket(CURL* /*easy*/, curl_socket_t socket, int what, void* loop,
                            void* /*watch*/) {
  // Never deleted here: this call may come from the notifier's own signal.
  const Watch& watch = static_cast<CurlMultiLoop*>(loop)->WatchOf(socket);
  watch.read->setEnabled(what == CURL_POLL_IN || what == CURL_POLL_INOUT);
  watch.write->setEnabled(what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
  return 0;
}

int CurlMultiLoop::OnTimer(CURLM* /*multi*/, long milliseconds, void* loop) {
  QTimer& timer = static_cast<CurlMultiLoop*>(loop)->timer_;
  if (milliseconds < 0) {
    timer.stop();
  } else {
    timer.start(std::chrono::milliseconds(milliseconds));
  }
  return 0;
}

CurlMultiLoop::Watch& CurlMultiLoop::WatchOf(curl_socket_t socket) {
  Watch& watch = watches_[socket];
  if (!watch.read) {
    watch.read = std::make_unique<QSocketNotifier>(QSocketNotifier::Read);
    watch.write = std::make_unique<QSocketNotifier>(QSocketNotifier::Write);
    watch.read->setSocket(socket);
    watch.write->setSocket(socket);
    connect(watch.read.get(), &QSocketNotifier::activated, this,
            [this, socket] { Act(socket, CURL_CSELECT_IN); });
    connect(watch.write.get(), &QSocketNotifier::activated, this,
            [this, socket] { Act(socket, CURL_CSELECT_OUT); });
  }
  return watch;
}

void CurlMultiLoop::Act(curl_socket_t socket, int events) {
  int running = 0;
  curl_multi_socket_action(multi_.get(), socket, events, &running);
  CollectTouched();
  CollectFinished();
  ResumeWaiters();
}

void CurlMultiLoop::CollectTouched() {
  for (CURL* handle : std::exchange(touched_, {})) {
    const auto found = running_.find(handle);
    if (found == running_.end()) continue;  // it came with an unpause and was dropped since
    found->second->ClearTouched();
    changed_.push_back(found->second);
  }
}

void CurlMultiLoop::CollectFinished() {
  // First all, then act: removing a handle makes its message invalid.
  std::vector<std::pair<CURL*, CURLcode>> finished;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg == CURLMSG_DONE) {
      finished.emplace_back(message->easy_handle, message->data.result);
    }
  }
  for (const auto& [handle, code] : finished) {
    const Exchange exchange = running_.extract(handle).mapped();
    if (exchange->Draining()) --drains_;
    curl_multi_remove_handle(multi_.get(), handle);
    exchange->FinishWith(code);
    changed_.push_back(exchange);
  }
}

// May be entered again from a coroutine that it resumes, and such a coroutine may even destroy the
// engine.
void CurlMultiLoop::ResumeWaiters() {
  const QPointer<CurlMultiLoop> self(this);
  while (self && !changed_.empty()) {
    const Exchange exchange = std::move(changed_.front());
    changed_.pop_front();
    if (const std::coroutine_handle<> waiter = exchange->TakeReadyWaiter()) waiter.resume();
    if (self && exchange->ShouldPause()) exchange->SetPaused(true);
  }
}

void CurlMultiLoop::End(const Exchange& exchange, HttpFailure failure) {
  CURL* handle = exchange->Handle();
  if (exchange->Draining()) --drains_;
  running_.erase(handle);
  curl_multi_remove_handle(multi_.get(), handle);
  exchange->Finish(failure);
  if (!exchange->HasWaiter()) return;
  changed_.push_back(exchange);
  wakeUp_.start(0);
}

void CurlMultiLoop::CheckDeadline(CURL* handle) {
  const Exchange exchange = running_.at(handle);
  const std::chrono::milliseconds left = exchange->IdleTimeLeft();
  if (left.count() > 0) {
    exchange->Deadline().start(left);
  } else {
    End(exchange, HttpFailure::TimedOut);
  }
}

}  // namespace zentorin
