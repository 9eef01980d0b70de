// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <memory>

#include <QCoro/QCoroTask>

namespace zentorin {

// Why a request brought no whole answer.
enum class HttpFailure {
  None,
  BadAddress,   // not an http or https address that can be asked
  Unreachable,  // no connection, no TLS session, no name
  TimedOut,
  CutOff,     // the answer ended short of its length, or broke off
  TooLarge,   // body or headers over their limit
  BadAnswer,  // not HTTP, too many redirects, a redirect to another scheme, broken encoding
  Cancelled,
};

struct HttpHeader {
  QByteArray name;
  QByteArray value;
};

// Headers of a request that no cache on the way may answer.
QList<HttpHeader> ReloadHeaders();

// A GET. Zero times mean "no limit".
struct HttpRequest {
  QString url;
  QList<HttpHeader> headers;
  QByteArray userAgent;  // none is sent when empty
  std::chrono::milliseconds connectTimeout{0};
  std::chrono::milliseconds totalTimeout{0};  // from the start to the last byte
  std::chrono::milliseconds idleTimeout{0};   // longest time without a byte
  qint64 maxBodyBytes = 0;                    // decoded bytes; 0 means no limit
  bool acceptCompressed = false;
  bool useSystemProxy = false;  // else a direct connection
};

// The head of the final answer, after redirects.
struct HttpHead {
  int status = 0;    // 0 when no answer came
  QString finalUrl;  // address of the final answer
  QList<HttpHeader> headers;
  QByteArray rawHeaders;  // status line and headers as they came, line ends included

  // First header of that name, letter case ignored; null when there is none.
  QByteArray Header(const char* name) const;
};

// One running request. Destroying it ends the request; a small rest of the body may still be read
// in the background so that the connection can be used again.
class HttpTransfer {
 public:
  // Blocks that NextBlock() hands out, in bytes.
  static constexpr qsizetype kBlockBytes = 102'400;

  HttpTransfer() = default;
  HttpTransfer(const HttpTransfer&) = delete;
  HttpTransfer& operator=(const HttpTransfer&) = delete;
  virtual ~HttpTransfer() = default;

  // Waits for the head of the final answer. Status 0: none came, Failure() says why.
  // The transfer must outlive the task.
  virtual QCoro::Task<HttpHead> Head() = 0;
  // Waits for the next block: kBlockBytes bytes, fewer for the last one, none at the end or after a
  // failure.
  virtual QCoro::Task<QByteArray> NextBlock() = 0;

  virtual HttpFailure Failure() const = 0;
  // What happened, for a message: in English as the library says it, may be empty.
  virtual QString FailureText() const = 0;
};

// Sends requests. Keeps connections alive and uses them again for all requests of a run. A cancel
// of the run ends every transfer at once with HttpFailure::Cancelled; a transfer opened while
// the cancel flag is set ends that way too.
class HttpEngine {
 public:
  HttpEngine() = default;
  HttpEngine(const HttpEngine&) = delete;
  HttpEngine& operator=(const HttpEngine&) = delete;
  virtual ~HttpEngine() = default;

  // Starts a request; it may run at the same time as others. The engine must outlive the transfer.
  virtual std::unique_ptr<HttpTransfer> Open(HttpRequest request) = 0;
};

// A whole answer in memory.
struct HttpAnswer {
  HttpHead head;
  QByteArray body;  // as far as it came
  HttpFailure failure = HttpFailure::None;
  QString failureText;
};

QCoro::Task<HttpAnswer> FetchWhole(HttpEngine& engine, HttpRequest request);

}  // namespace zentorin
