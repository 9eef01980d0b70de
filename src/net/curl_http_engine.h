// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

#include "net/http_engine.h"

namespace zentorin {

class CurlMultiLoop;
class RunState;

// libcurl's multi interface on Qt's event loop: socket notifiers and one timer, no polling.
class CurlHttpEngine : public HttpEngine {
 public:
  // `connectTo`: "host:port:address:port[,…]" as curl's --connect-to; empty means none. Where
  // a map is given, no proxy is asked. `state` must outlive the engine, and the engine its
  // transfers.
  CurlHttpEngine(RunState& state, const QString& connectTo);
  ~CurlHttpEngine() override;

  std::unique_ptr<HttpTransfer> Open(HttpRequest request) override;

 private:
  std::unique_ptr<CurlMultiLoop> loop_;
};

// Version of the HTTP library at run time and of what it uses for TLS: "7.88.1 (OpenSSL/3.0.9)".
QString HttpLibraryVersion();

}  // namespace zentorin
