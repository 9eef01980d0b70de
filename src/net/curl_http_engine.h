// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>

#include "net/http_engine.h"

namespace zentorin {

class CurlMultiLoop;

class CurlHttpEngine : public HttpEngine {
 public:
  // "host:port:address:port[,…]" as curl's --connect-to; where it is given, no proxy is asked.
  explicit CurlHttpEngine(const QString& connectTo);
  ~CurlHttpEngine() override;

  std::unique_ptr<HttpTransfer> Open(HttpRequest request) override;
  void StartRun(int connectionsPerHost) override;

  // Hears, again and again, for how long a host is still left alone as it asked; of an empty host
  // when that is over.
  using PauseListener = std::function<void(const QString& host, std::chrono::seconds left)>;
  void TellPauses(const PauseListener& listener);

 private:
  std::unique_ptr<CurlMultiLoop> loop_;
};

QString HttpLibraryVersion();  // "7.88.1 (OpenSSL/3.0.9)"

}  // namespace zentorin
