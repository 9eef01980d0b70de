// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

#include "net/fetch_choices.h"
#include "net/miss_reason.h"

namespace zentorin {

class Activity;

// A page as text: that of an answer of status 200, as far as it came.
struct FetchedPage {
  bool Ok() const { return httpStatus == kHttpOk && (failure == HttpFailure::None || isCutShort); }

  bool isCutShort = false;  // `failure` says why
  HttpFailure failure = HttpFailure::None;
  std::optional<BytesReceived> bytes;  // of a body that failed
  int httpStatus = 0;                  // 0: no answer came
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

  MyXMLHttpRequest(HttpEngine& engine, Activity& activity, const FetchChoices& choices)
      : engine_(engine), activity_(activity), choices_(choices) {}

  // The stages below, one after the other while no answer comes. One that broke off, or that the
  // server may give at another moment, is asked for again.
  // `gate`: of a page that is fetched ahead; it outlives the task.
  QCoro::Task<FetchedPage> FetchPageText(QString url, CancelToken cancel, ReadGate* gate = nullptr);

  // Sends a whole GET and reads no body; a failure is one of the head. Zero seconds mean 15.
  QCoro::Task<HttpAnswer> QueryHead(QString url, CancelToken cancel,
                                    std::chrono::seconds timeout = std::chrono::seconds(0));
  // One header of it; nothing in the program calls it, kept to complete the query: at most 1024
  // characters, "" when it cannot be had.
  QCoro::Task<QString> QueryHeader(QString url, HeaderSelector selector, CancelToken cancel,
                                   std::chrono::seconds timeout = std::chrono::seconds(0));

  QCoro::Task<FetchedPage> LoadDocument(QString url, CancelToken cancel, ReadGate* gate = nullptr);
  QCoro::Task<FetchedPage> FetchWithXmlHttp(QString url, bool decode, QByteArray ifModifiedSince,
                                            CancelToken cancel, ReadGate* gate = nullptr);
  QCoro::Task<FetchedPage> FetchWholeBody(QString url, CancelToken cancel,
                                          ReadGate* gate = nullptr);

 private:
  QCoro::Task<FetchedPage> RunStage(int stage, const QString& url, const CancelToken& cancel,
                                    ReadGate* gate);

  HttpEngine& engine_;
  Activity& activity_;
  const FetchChoices& choices_;
};

}  // namespace zentorin
