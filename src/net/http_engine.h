// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <memory>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "net/read_gate.h"

namespace zentorin {

enum class HttpFailure {
  None,
  BadAddress,  // not an http or https address that can be asked
  NoName,      // the host has no address
  NoConnection,
  NoTrust,   // no TLS session: a certificate that does not fit, no common cipher
  HostDown,  // not asked: the host could not be connected to several times in a row
  TimedOut,
  TooSlow,       // bytes came, but too few
  CutOff,        // the answer ended short of its length, or broke off
  TooLarge,      // body or headers over their limit
  BadAnswer,     // not HTTP, broken encoding
  BadRedirect,   // too many of them, or to another scheme
  NoDescriptor,  // this process may open no more of them
  Dropped,       // an early request that stood in the way or waited too long: to be asked anew
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
  std::chrono::milliseconds headTimeout{0};  // from the start to the end of the final headers
  std::chrono::milliseconds idleTimeout{0};  // longest time without a byte
  std::chrono::milliseconds slowTime{0};     // longest time with fewer than 100 bytes a second
  qint64 maxBodyBytes = 0;                   // decoded bytes; 0 means no limit
  bool acceptCompressed = false;
  bool useSystemProxy = false;  // else a direct connection
  // Sent ahead of its turn: leaves one connection for what is read, waits at most 10 s with a full
  // block that nobody takes, and goes as soon as its host bears one request at a time.
  bool early = false;
  bool alone = false;  // early ones to the same host go
  CancelToken cancel;  // ends it at once, with HttpFailure::Cancelled
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
  QString finalUrl;  // address of the final answer, or of what failed behind a redirect
  QList<HttpHeader> headers;
  QByteArray rawHeaders;               // status line and headers as they came, line ends included
  std::chrono::seconds retryAfter{0};  // for how long the server wants to be left alone

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

  virtual void TakeTurn() {}  // no longer early
};

// Requests share connections and may run at the same time, so many to a host and in all; the rest
// waits. Transfers end before their engine.
class HttpEngine {
 public:
  HttpEngine() = default;
  HttpEngine(const HttpEngine&) = delete;
  HttpEngine& operator=(const HttpEngine&) = delete;
  virtual ~HttpEngine() = default;

  virtual std::unique_ptr<HttpTransfer> Open(HttpRequest request) = 0;

  // A command begins: what the last one learned of the hosts is forgotten.
  virtual void StartRun(int /*connectionsPerHost*/) {}
};

struct HttpAnswer {
  HttpHead head;
  QByteArray body;  // as far as it came
  HttpFailure failure = HttpFailure::None;
};

// To its end; the head has come.
QCoro::Task<void> ReadBody(HttpTransfer& transfer, HttpAnswer& answer, ReadGate* gate = nullptr);
QCoro::Task<HttpAnswer> FetchWhole(HttpEngine& engine, HttpRequest request);

}  // namespace zentorin
