// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <memory>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

enum class HttpFailure {
  None,
  BadAddress,  // not an http or https address that can be asked
  NoName,      // the host has no address
  NoConnection,
  HostDown,  // not asked: no connection to it came about several times in a row
  NoTrust,   // no TLS session: a certificate that does not fit, no common cipher
  TimedOut,
  TooSlow,
  CutOff,       // the answer ended short of its length, or broke off
  TooLarge,     // body or headers over their limit
  BadAnswer,    // not HTTP, broken encoding
  BadRedirect,  // too many of them, or to another scheme
  Cancelled,
};

// What failed is not to be had on another try or in another way.
bool IsFinal(HttpFailure failure);

struct HttpHeader {
  QByteArray name;
  QByteArray value;
};

QList<HttpHeader> ReloadHeaders();  // no cache on the way may answer

// Zero times mean "no limit".
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
  CancelToken cancel;           // ends it at once, with HttpFailure::Cancelled
};

inline constexpr int kHttpOk = 200;

// A server says that there is nothing under this address: nobody's failure.
bool IsGone(int httpStatus);

// Why an answer is no whole one of status 200, in Japanese and without a full stop; `host` is the
// one that was asked.
QString WhyNoAnswer(HttpFailure failure, int httpStatus, const QString& host);

// Of the final answer, after redirects.
struct HttpHead {
  int status = 0;    // 0 when no answer came
  QString finalUrl;  // address of the final answer
  QList<HttpHeader> headers;
  QByteArray rawHeaders;  // status line and headers as they came, line ends included

  QByteArray Header(const char* name) const;  // letter case ignored; null when there is none
};

// Destroying it ends the request; a small rest of the body may still be read in the background.
class HttpTransfer {
 public:
  static constexpr qsizetype kBlockBytes = 102'400;

  HttpTransfer() = default;
  HttpTransfer(const HttpTransfer&) = delete;
  HttpTransfer& operator=(const HttpTransfer&) = delete;
  virtual ~HttpTransfer() = default;

  // Status 0: no answer came, Failure() says why.
  virtual QCoro::Task<HttpHead> Head() = 0;
  // kBlockBytes bytes, fewer for the last block, none at the end or after a failure.
  virtual QCoro::Task<QByteArray> NextBlock() = 0;

  virtual HttpFailure Failure() const = 0;
};

// Requests share connections and may run at the same time. Transfers end before their engine.
class HttpEngine {
 public:
  HttpEngine() = default;
  HttpEngine(const HttpEngine&) = delete;
  HttpEngine& operator=(const HttpEngine&) = delete;
  virtual ~HttpEngine() = default;

  virtual std::unique_ptr<HttpTransfer> Open(HttpRequest request) = 0;
};

struct HttpAnswer {
  HttpHead head;
  QByteArray body;  // as far as it came
  HttpFailure failure = HttpFailure::None;
};

QCoro::Task<HttpAnswer> FetchWhole(HttpEngine& engine, HttpRequest request);

}  // namespace zentorin
