// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

#include "net/http_engine.h"

namespace zentorin {

class RunState;

// A page as text. Status 0: fetched; negative: failed; 1: cancelled; any other number: the HTTP
// status of an answer other than 200. Only 0 carries text.
struct FetchedPage {
  int status = -1;
  QString text;
  QString finalUrl;
};

// Which header a query asks for.
enum class HeaderSelector { ContentLength = 5, LastModified = 11, StatusCode = 19 };

// Host and path of an address by text rules alone: no "://" gives two empty texts, no path gives
// "/".
QString HostOf(const QString& url);
QString PathOf(const QString& url);

// The page fetch with its three stages, the header query and the whole-body fetch. `engine` and
// `state` must outlive it.
class MyXMLHttpRequest {
 public:
  static constexpr qint64 kMaxPageBytes = 64LL * 1024 * 1024;  // decoded

  MyXMLHttpRequest(HttpEngine& engine, RunState& state);

  // What the crawl and the extractor call.
  QCoro::Task<FetchedPage> FetchPageText(QString url);

  // One header of an answer as text of at most 1024 characters, "" when it cannot be had. Sends a
  // whole GET to port 80 and reads no body. Zero seconds mean 15.
  QCoro::Task<QString> QueryHeader(QString url, HeaderSelector selector,
                                   std::chrono::seconds timeout = std::chrono::seconds(0));

  // The stages, each also on its own.
  QCoro::Task<FetchedPage> LoadDocument(QString url);
  QCoro::Task<FetchedPage> FetchWithXmlHttp(QString url, bool decode, QByteArray ifModifiedSince);
  QCoro::Task<FetchedPage> FetchWholeBody(QString url);

 private:
  HttpEngine& engine_;
  RunState& state_;
};

}  // namespace zentorin
