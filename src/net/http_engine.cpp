// SPDX-License-Identifier: MIT
#include "net/http_engine.h"

#include <utility>

namespace zentorin {

QList<HttpHeader> ReloadHeaders() {
  return {{.name = "Cache-Control", .value = "no-cache"}, {.name = "Pragma", .value = "no-cache"}};
}

QByteArray HttpHead::Header(const char* name) const {
  for (const HttpHeader& header : headers) {
    if (header.name.compare(name, Qt::CaseInsensitive) == 0) return header.value;
  }
  return {};
}

QCoro::Task<HttpAnswer> FetchWhole(HttpEngine& engine, HttpRequest request) {
  const std::unique_ptr<HttpTransfer> transfer = engine.Open(std::move(request));
  HttpAnswer answer;
  answer.head = co_await transfer->Head();
  while (true) {
    const QByteArray block = co_await transfer->NextBlock();
    if (block.isEmpty()) break;
    answer.body += block;
  }
  answer.failure = transfer->Failure();
  co_return answer;
}

}  // namespace zentorin
