// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

#include "net/http_engine.h"

namespace zentorin::test {

struct MemoryAnswer {
  // NOLINTNEXTLINE(google-explicit-constructor): most answers are a body
  MemoryAnswer(QByteArray bytes, int httpStatus = 200, HttpFailure fault = HttpFailure::None)
      : body(std::move(bytes)), status(httpStatus), failure(fault) {}

  QByteArray body;
  int status;
  HttpFailure failure;  // at the end of the body; without a status instead of any answer
};

// Answers every request at once and from memory: no socket, no turn of the event loop. What runs on
// it costs only its own time and meets the deepest nesting of coroutines.
class MemoryEngine : public HttpEngine {
 public:
  using Pages = std::function<MemoryAnswer(const QString& url)>;

  explicit MemoryEngine(Pages pages) : pages_(std::move(pages)) {}

  std::unique_ptr<HttpTransfer> Open(HttpRequest request) override {
    ++requests;
    return std::make_unique<Transfer>(request.url, pages_(request.url));
  }

  int requests = 0;

 private:
  class Transfer : public HttpTransfer {
   public:
    Transfer(QString url, MemoryAnswer answer) : url_(std::move(url)), answer_(std::move(answer)) {}

    QCoro::Task<HttpHead> Head() override {
      HttpHead head;
      head.status = answer_.status;
      if (head.status != 0) head.finalUrl = url_;
      head.headers = {{.name = "Content-Type", .value = "text/html; charset=utf-8"}};
      co_return head;
    }
    QCoro::Task<QByteArray> NextBlock() override {
      QByteArray block = answer_.body.left(kBlockBytes);
      answer_.body.remove(0, block.size());
      co_return block;
    }
    HttpFailure Failure() const override { return answer_.failure; }

   private:
    QString url_;
    MemoryAnswer answer_;
  };

  Pages pages_;
};

}  // namespace zentorin::test
