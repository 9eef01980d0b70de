// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

#include "net/http_engine.h"

namespace zentorin {

class RunState;

// libcurl's multi interface on Qt's event loop: socket notifiers and one timer, no polling.
class CurlHttpEngine : public HttpEngine {
 public:
  // `connectTo`: "host:port:address:port[,…]" as curl's --connect-to; empty means none. `state`
  // must outlive the engine.
  CurlHttpEngine(RunState& state, const QString& connectTo);
  ~CurlHttpEngine() override;

  std::unique_ptr<HttpTransfer> Open(HttpRequest request) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace zentorin
