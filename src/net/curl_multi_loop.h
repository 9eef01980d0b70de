// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <deque>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "net/curl_exchange.h"
#include "net/curl_handles.h"

class QSocketNotifier;

namespace zentorin {

class RunState;

// Drives libcurl's multi interface from Qt's event loop: notifiers for its sockets, one timer, no
// polling. Coroutines are resumed only after every libcurl call has returned, so they may open and
// drop transfers freely.
class CurlMultiLoop : public QObject {
  Q_OBJECT

 public:
  CurlMultiLoop(RunState& state, CurlList connectTo);
  ~CurlMultiLoop() override;

  std::shared_ptr<CurlExchange> Start(HttpRequest request);
  // Nobody reads it any more: it is ended, or drained when little is left.
  void Release(const std::shared_ptr<CurlExchange>& exchange);
  // A block was taken.
  void MakeRoom(CurlExchange& exchange);

 private:
  using Exchange = std::shared_ptr<CurlExchange>;

  // The notifiers of one socket number, kept for the next connection that gets the number.
  struct Watch {
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
  void End(const Exchange& exchange, HttpFailure failure, const QString& text);
  void CancelAll();
  void CheckDeadline(CURL* handle);

  RunState& state_;
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
