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

class QSocketNotifier;

namespace zentorin {

// libcurl's multi interface on socket notifiers and one timer. Coroutines are resumed only after
// every libcurl call has returned, so they may open and drop transfers freely.
class CurlMultiLoop : public QObject {
  Q_OBJECT

 public:
  explicit CurlMultiLoop(CurlList connectTo);
  ~CurlMultiLoop() override;

  std::shared_ptr<CurlExchange> Start(HttpRequest request);
  // Ends it, or drains it when little is left.
  void Release(const std::shared_ptr<CurlExchange>& exchange);
  void MakeRoom(CurlExchange& exchange);  // a block was taken

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
  void CollectFinished();
  void CollectTouched();
  void ResumeWaiters();
  void End(const Exchange& exchange, HttpFailure failure);
  void CheckDeadline(CURL* handle);

  CurlList connectTo_;
  std::unordered_map<curl_socket_t, Watch> watches_;
  QTimer timer_;   // libcurl's own
  QTimer wakeUp_;  // resumes waiters from a clean stack
  std::vector<CURL*> touched_;
  std::unordered_map<CURL*, Exchange> running_;
  std::deque<Exchange> changed_;
  int drains_ = 0;
  CurlMulti multi_;
};

}  // namespace zentorin
