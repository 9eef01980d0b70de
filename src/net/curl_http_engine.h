// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
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

 private:
  std::unique_ptr<CurlMultiLoop> loop_;
};

QString HttpLibraryVersion();  // "7.88.1 (OpenSSL/3.0.9)"

}  // namespace zentorin
