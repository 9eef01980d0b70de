// SPDX-License-Identifier: MIT
#include "net/curl_multi_loop.h"

#include <QPointer>
#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace zentorin {

namespace {

constexpr long kMaxIdleConnections = 64;
constexpr int kMaxDrains = 16;
constexpr size_t kMaxIdleHandles = 16;
constexpr std::chrono::milliseconds kTick{100};

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
  connect(&wakeUp_, &QTimer::timeout, this, [this] {
    Admit();
    ResumeWaiters();
  });
  tick_.setInterval(kTick);
  connect(&tick_, &QTimer::timeout, this, &CurlMultiLoop::Tick);
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
  if (cancel.Cancelled() || exchange->Host().isEmpty()) {
    exchange->Finish(cancel.Cancelled() ? HttpFailure::Cancelled : HttpFailure::BadAddress);
    return exchange;
  }
  cancel.OnCancel(&exchange->Lifetime(), [this, weak = std::weak_ptr(exchange)] {
    const Exchange cancelled = weak.lock();
    if (cancelled && !cancelled->Finished()) End(cancelled, HttpFailure::Cancelled);
  });
  if (exchange->Request().alone) EndEarlyOnes(exchange->Host());
  waiting_.push_back(exchange);
  if (!tick_.isActive()) tick_.start();
  Admit();
  return exchange;
}

void CurlMultiLoop::TakeTurn(const Exchange& exchange) {
  if (!exchange->Request().early) return;
  exchange->TakeTurn();
  if (exchange->Handle() != nullptr) hosts_.TookTurn(exchange->Host());
  Admit();
}

// What is read goes before what is early; else first come, first served.
void CurlMultiLoop::Admit() {
  const auto now = std::chrono::steady_clock::now();
  std::vector<Exchange> hopeless;
  for (const bool early : {false, true}) {
    for (auto next = waiting_.begin(); next != waiting_.end();) {
      const Exchange exchange = *next;
      const HostBook::Entry entry = hosts_.Ask(exchange->Host(), exchange->Request(), now);
      if (exchange->Request().early != early || entry == HostBook::Entry::Later) {
        ++next;
        continue;
      }
      next = waiting_.erase(next);
      if (entry == HostBook::Entry::Now) {
        Launch(exchange);
      } else {
        hopeless.push_back(exchange);
      }
    }
  }
  for (const Exchange& exchange : hopeless) End(exchange, HttpFailure::HostDown);
}

void CurlMultiLoop::Launch(const Exchange& exchange) {
  CurlEasy easy;
  if (idle_.empty()) {
    easy.reset(curl_easy_init());
  } else {
    easy = std::move(idle_.back());
    idle_.pop_back();
  }
  if (!easy) qFatal("libcurl is out of memory");
  exchange->Start(std::move(easy), connectTo_.get());
  hosts_.Opened(exchange->Host(), exchange->Request());
  running_.emplace(exchange->Handle(), exchange);
  curl_multi_add_handle(multi_.get(), exchange->Handle());
}

// They do not drain: their connections go.
void CurlMultiLoop::EndEarlyOnes(const QString& host) {
  std::vector<Exchange> early;
  const auto note = [&](const Exchange& exchange) {
    if (exchange->Request().early && exchange->Host() == host) early.push_back(exchange);
  };
  for (const auto& [handle, exchange] : running_) note(exchange);
  std::ranges::for_each(waiting_, note);
  for (const Exchange& exchange : early) End(exchange, HttpFailure::Dropped);
}

void CurlMultiLoop::Release(const Exchange& exchange) {
  if (exchange->Finished()) return;
  // A coroutine that still waits is told; it holds the exchange, not the transfer.
  if (!exchange->HasWaiter() && exchange->IsWorthDraining() && drains_ < kMaxDrains) {
    ++drains_;
    exchange->StartDraining();
    Learn(exchange);
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
    const auto found = running_.find(handle);
    if (found == running_.end()) continue;  // ended since, for what another one told of its host
    const Exchange exchange = found->second;
    exchange->FinishWith(code);
    Settle(exchange);
    changed_.push_back(exchange);
  }
  if (!finished.empty()) Admit();
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
  exchange->Finish(failure);
  if (exchange->Handle() != nullptr) {
    Settle(exchange);
  } else {
    std::erase(waiting_, exchange);
  }
  if (exchange->HasWaiter()) changed_.push_back(exchange);
  wakeUp_.start(0);
}

// A finished exchange gives its handle back and its host learns of it.
void CurlMultiLoop::Settle(const Exchange& exchange) {
  const bool hasTold = exchange->Draining();
  if (hasTold) --drains_;
  hosts_.Closed(exchange->Host(), exchange->Request());
  running_.erase(exchange->Handle());
  curl_multi_remove_handle(multi_.get(), exchange->Handle());
  CurlEasy handle = exchange->TakeHandle();
  if (idle_.size() < kMaxIdleHandles) {
    curl_easy_reset(handle.get());
    idle_.push_back(std::move(handle));
  }
  if (!hasTold) Learn(exchange);
}

// What an exchange tells of its host. What another one did that it was led to is not its affair.
void CurlMultiLoop::Learn(const Exchange& exchange) {
  const auto now = std::chrono::steady_clock::now();
  const HttpFailure failure = exchange->Failure();
  const QString& host = exchange->Host();
  const bool boreMore = !hosts_.OneAtATime(host);
  const bool isUnknown = failure == HttpFailure::NoConnection || failure == HttpFailure::NoName;
  if (exchange->Answered()) {
    hosts_.Answered(host, exchange->Head(), now);
  } else if (exchange->NeverConnected() && (isUnknown || failure == HttpFailure::TimedOut)) {
    hosts_.NotConnected(host, !isUnknown, now);
  } else if (exchange->Request().early && exchange->BrokeOffUnanswered()) {
    hosts_.RefusedEarly(host);
  }
  if (boreMore && hosts_.OneAtATime(host)) EndEarlyOnes(host);
}

void CurlMultiLoop::Tick() {
  const auto now = std::chrono::steady_clock::now();
  std::vector<std::pair<Exchange, HttpFailure>> overdue;
  for (const auto& [handle, exchange] : running_) {
    const HttpFailure failure = exchange->CheckTimes(now);
    if (failure != HttpFailure::None) overdue.emplace_back(exchange, failure);
  }
  for (const auto& [exchange, failure] : overdue) End(exchange, failure);
  Admit();
  ShowPause(now);
  if (running_.empty() && waiting_.empty()) tick_.stop();
}

void CurlMultiLoop::ShowPause(CurlExchange::Time now) {
  const auto paused = std::ranges::find_if(waiting_, [&](const Exchange& exchange) {
    return !exchange->Request().early && hosts_.IsPaused(exchange->Host(), now);
  });
  if (paused != waiting_.end()) {
    const QString& host = (*paused)->Host();
    const auto left = std::chrono::ceil<std::chrono::seconds>(hosts_.PausedUntil(host) - now);
    Q_EMIT WaitingFor(host, left);
  } else if (showsPause_) {
    Q_EMIT WaitingFor({}, std::chrono::seconds(0));
  }
  showsPause_ = paused != waiting_.end();
}

}  // namespace zentorin
