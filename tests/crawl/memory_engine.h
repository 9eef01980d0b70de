// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

#include "net/http_engine.h"

namespace zentorin::test {

// Answers every request at once and from memory: no socket, no turn of the event loop. What runs on
// it costs only its own time and meets the deepest nesting of coroutines.
class MemoryEngine : public HttpEngine {
 public:
  using Pages = std::function<QByteArray(const QString& url)>;

  explicit MemoryEngine(Pages pages) : pages_(std::move(pages)) {}

  std::unique_ptr<HttpTransfer> Open(HttpRequest request) override {
    ++requests;
    return std::make_unique<Transfer>(request.url, pages_(request.url));
  }

  int requests = 0;

 private:
  class Transfer : public HttpTransfer {
   public:
    Transfer(QString url, QByteArray body) : url_(std::move(url)), body_(std::move(body)) {}

    QCoro::Task<HttpHead> Head() override {
      HttpHead head;
      head.status = 200;
      head.finalUrl = url_;
      head.headers = {{.name = "Content-Type", .value = "text/html; charset=utf-8"}};
      co_return head;
    }
    QCoro::Task<QByteArray> NextBlock() override {
      QByteArray block = body_.left(kBlockBytes);
      body_.remove(0, block.size());
      co_return block;
    }
    HttpFailure Failure() const override { return HttpFailure::None; }

   private:
    QString url_;
    QByteArray body_;
  };

  Pages pages_;
};

}  // namespace zentorin::test
