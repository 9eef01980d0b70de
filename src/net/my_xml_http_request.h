// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

#include "net/http_engine.h"

namespace zentorin {

// A page as text. Only a whole answer of status 200 carries text.
struct FetchedPage {
  bool Ok() const { return failure == HttpFailure::None && httpStatus == kHttpOk; }

  HttpFailure failure = HttpFailure::None;
  int httpStatus = 0;  // 0: no answer came
  QString text;
  QString finalUrl;
};

// What a query asks for. Nothing in the program asks for StatusCode; kept to complete the query.
enum class HeaderSelector { ContentLength = 5, LastModified = 11, StatusCode = 19 };

// By text: no "://" gives two empty texts, no path gives "/".
QString HostOf(const QString& url);
QString PathOf(const QString& url);

class MyXMLHttpRequest {
 public:
  static constexpr qint64 kMaxPageBytes = 64LL * 1024 * 1024;  // decoded

  explicit MyXMLHttpRequest(HttpEngine& engine) : engine_(engine) {}

  // The stages below, one after the other.
  QCoro::Task<FetchedPage> FetchPageText(QString url, CancelToken cancel);

  // Sends a whole GET and reads no body; a failure is one of the head. Zero seconds mean 15.
  QCoro::Task<HttpAnswer> QueryHead(QString url, CancelToken cancel,
                                    std::chrono::seconds timeout = std::chrono::seconds(0));
  // One header of it; nothing in the program calls it, kept to complete the query: at most 1024
  // characters, "" when it cannot be had.
  QCoro::Task<QString> QueryHeader(QString url, HeaderSelector selector, CancelToken cancel,
                                   std::chrono::seconds timeout = std::chrono::seconds(0));

  QCoro::Task<FetchedPage> LoadDocument(QString url, CancelToken cancel);
  QCoro::Task<FetchedPage> FetchWithXmlHttp(QString url, bool decode, QByteArray ifModifiedSince,
                                            CancelToken cancel);
  QCoro::Task<FetchedPage> FetchWholeBody(QString url, CancelToken cancel);

 private:
  HttpEngine& engine_;
};

}  // namespace zentorin
