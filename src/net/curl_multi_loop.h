// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

#include "net/curl_exchange.h"
#include "net/curl_handles.h"
#include "net/host_book.h"

class QSocketNotifier;

namespace zentorin {

// libcurl's multi interface on socket notifiers and timers. Requests that their host does not bear
// yet wait here. Coroutines are resumed only after every libcurl call has returned, so they may
// open and drop transfers freely.
class CurlMultiLoop : public QObject {
  Q_OBJECT

 public:
  explicit CurlMultiLoop(CurlList connectTo);
  ~CurlMultiLoop() override;

  void StartRun() { hosts_.StartRun(); }
  void SetConnectionsPerHost(int count) { hosts_.SetConnectionsPerHost(count); }

  std::shared_ptr<CurlExchange> Start(HttpRequest request);
  void TakeTurn(const std::shared_ptr<CurlExchange>& exchange);  // it is early no longer
  // Ends it, or drains it when little is left.
  void Release(const std::shared_ptr<CurlExchange>& exchange);
  void MakeRoom(CurlExchange& exchange);  // a block was taken

 Q_SIGNALS:
  // Every moment while a host is left alone as it asked; an empty text once nothing waits any more.
  void WaitingFor(const QString& host, std::chrono::seconds left);

 private:
  using Exchange = std::shared_ptr<CurlExchange>;

  struct Watch {  // kept for the next connection of that number
    std::unique_ptr<QSocketNotifier> read;
    std::unique_ptr<QSocketNotifier> write;
  };

  static int OnSocket(CURL* easy, curl_socket_t socket, int what, void* loop, void* watch);
  static int OnTimer(CURLM* multi, long milliseconds, void* loop);

  Watch& WatchOf(curl_socket_t socket);
  void Act(curl_socket_t socket, int events);
  void Admit();
  void Launch(const Exchange& exchange);
  void EndEarlyOnes(const QString& host);
  void CollectFinished();
  void CollectTouched();
  void ResumeWaiters();
  void End(const Exchange& exchange, HttpFailure failure);
  void Settle(const Exchange& exchange);
  void Learn(const Exchange& exchange);
  void Tick();
  void ShowPause(CurlExchange::Time now);

  CurlList connectTo_;
  std::unordered_map<curl_socket_t, Watch> watches_;
  QTimer timer_;   // libcurl's own
  QTimer wakeUp_;  // resumes waiters from a clean stack
  QTimer tick_;    // looks at the times of all requests
  HostBook hosts_;
  std::deque<Exchange> waiting_;  // for their host
  std::vector<CurlEasy> idle_;    // handles to be used again
  bool showsPause_ = false;
  std::vector<CURL*> touched_;
  std::unordered_map<CURL*, Exchange> running_;
  std::deque<Exchange> changed_;
  int drains_ = 0;
  CurlMulti multi_;
};

}  // namespace zentorin
