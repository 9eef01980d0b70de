// SPDX-License-Identifier: MIT
#include "net/my_xml_http_request.h"

#include <array>
#include <utility>

#include "base/ansi_text.h"
#include "base/product_name.h"
#include "net/api_web.h"
#include "net/decode_addo.h"
#include "net/modjudg.h"
#include "net/page_text.h"
#include "net/second_chances.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

using std::chrono::seconds;

// The longest silence of a page; its last stage waits longer.
constexpr seconds kPageSilence{20};
constexpr seconds kLastPageSilence{60};
constexpr seconds kConnectTime{20};
constexpr seconds kHeadTime{60};
constexpr std::chrono::minutes kSlowTime{5};
constexpr seconds kQueryTime{15};
constexpr int kLastStage = 2;
constexpr qsizetype kMaxHeaderText = 1024;

HttpRequest PageRequest(const QString& url, const CancelToken& cancel) {
  HttpRequest request;
  request.url = url;
  request.userAgent = ProductName().toLatin1();
  request.connectTimeout = kConnectTime;
  request.headTimeout = kHeadTime;
  request.idleTimeout = kPageSilence;
  request.slowTime = kSlowTime;
  request.maxBodyBytes = MyXMLHttpRequest::kMaxPageBytes;
  request.acceptCompressed = true;
  request.useSystemProxy = true;
  request.cancel = cancel;
  return request;
}

// A compressed answer announces another length than that of its text.
BytesReceived BytesOf(const HttpAnswer& answer) {
  BytesReceived bytes{.received = answer.body.size()};
  const bool isPlain = answer.head.Header("Content-Encoding").isEmpty();
  if (isPlain) bytes.announced = answer.head.Header("Content-Length").toLongLong();
  return bytes;
}

// What an answer comes to before its text is looked at.
FetchedPage PageOf(const HttpAnswer& answer, const CancelToken& cancel) {
  FetchedPage page;
  page.failure = cancel.Cancelled() ? HttpFailure::Cancelled : answer.failure;
  page.httpStatus = answer.head.status;
  page.finalUrl = answer.head.finalUrl;
  page.isCutShort = MayPass(page.failure, 0) && !answer.body.isEmpty();
  if (page.httpStatus == kHttpOk && page.failure != HttpFailure::None) page.bytes = BytesOf(answer);
  return page;
}

// What is no page is left at its head.
QCoro::Task<HttpAnswer> FetchPage(HttpEngine& engine, HttpRequest request, ReadGate* gate) {
  const std::unique_ptr<HttpTransfer> transfer = engine.Open(std::move(request));
  HttpAnswer answer;
  answer.head = co_await transfer->Head();
  if (IsNoPage(answer.head)) co_return answer;
  co_await ReadBody(*transfer, answer, gate);
  co_return answer;
}

QString HeaderText(const HttpHead& head, HeaderSelector selector) {
  switch (selector) {
    case HeaderSelector::ContentLength:
      return QString::fromLatin1(head.Header("Content-Length"));
    case HeaderSelector::LastModified:
      return QString::fromLatin1(head.Header("Last-Modified"));
    case HeaderSelector::StatusCode:
      return QString::number(head.status);
  }
  return {};
}

}  // namespace

QString HostOf(const QString& url) {
  const QString root = API_Web::SiteRootOf(url);
  return root.mid(root.indexOf(u"://"_s) + 3);
}

QString PathOf(const QString& url) {
  const QString root = API_Web::SiteRootOf(url);
  if (root.isEmpty()) return {};
  const QString path = url.sliced(root.size());
  return path.isEmpty() ? u"/"_s : path;
}

// Another stage is the next try of a page that no answer came for.
QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchPageText(QString url, CancelToken cancel,
                                                         ReadGate* gate) {
  SecondChances chances(choices_, activity_, cancel);
  chances.AllowForCompany();
  FetchedPage longest;
  for (int stage = 0;;) {
    FetchedPage page = co_await RunStage(stage, url, cancel, gate);
    if (page.isCutShort && page.text.size() >= longest.text.size()) longest = page;
    const bool hasNextStage = page.httpStatus == 0 && stage < kLastStage;
    bool goesOn = MayPass(page.failure, page.httpStatus) && (hasNextStage || chances.Left());
    if (goesOn && chances.Left()) goesOn = co_await chances.Pause();
    if (!goesOn) {
      const bool isWhole = page.Ok() && !page.isCutShort;
      co_return isWhole || !longest.isCutShort || cancel.Cancelled() ? page : longest;
    }
    if (hasNextStage) ++stage;
  }
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::RunStage(int stage, const QString& url,
                                                    const CancelToken& cancel, ReadGate* gate) {
  if (stage == 0) return LoadDocument(url, cancel, gate);
  if (stage == 1) return FetchWithXmlHttp(url, true, QByteArray(), cancel, gate);
  return FetchWholeBody(url, cancel, gate);
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::LoadDocument(QString url, CancelToken cancel,
                                                        ReadGate* gate) {
  HttpRequest request = PageRequest(url, cancel);
  const HttpAnswer answer = co_await FetchPage(engine_, std::move(request), gate);
  FetchedPage page = PageOf(answer, cancel);
  if (page.Ok()) {
    page.text = PageText(answer.head, answer.body);
  }
  co_return page;
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchWithXmlHttp(QString url, bool decode,
                                                            QByteArray ifModifiedSince,
                                                            CancelToken cancel, ReadGate* gate) {
  FetchedPage page;
  page.failure = HttpFailure::BadAddress;
  if (url.isEmpty()) co_return page;
  HttpRequest request = PageRequest(url, cancel);
  request.headers.append(HttpHeader{.name = "If-Modified-Since", .value = ifModifiedSince});
  request.headers.append(
      HttpHeader{.name = "Content-Type", .value = "application/x-www-form-urlencoded"});
  const HttpAnswer answer = co_await FetchPage(engine_, std::move(request), gate);
  page = PageOf(answer, cancel);
  if (!page.Ok()) co_return page;
  if (decode) {
    const QString charset = modJUDG::CharsetOfPage(answer.body);
    page.text = Decode_ADDO::DecodeByTable(answer.body, charset);
  } else {
    const QStringList charsets{CharsetOfHead(answer.head), CharsetOfMark(answer.body), u"UTF-8"_s};
    page.text = Decode_ADDO::DecodeDocument(answer.body, charsets);
  }
  co_return page;
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchWholeBody(QString url, CancelToken cancel,
                                                          ReadGate* gate) {
  HttpRequest request = PageRequest(url, cancel);
  request.headers = ReloadHeaders();
  request.idleTimeout = kLastPageSilence;
  request.acceptCompressed = false;
  request.useSystemProxy = false;
  const HttpAnswer answer = co_await FetchPage(engine_, std::move(request), gate);
  FetchedPage page = PageOf(answer, cancel);
  if (!page.Ok()) co_return page;
  // The character set is worked out and then not used: the result is always the text that the
  // system's code page makes of the bytes.
  static_cast<void>(modJUDG::CharsetOfPage(answer.body));
  page.text = DecodeAnsi(answer.body);
  co_return page;
}

QCoro::Task<HttpAnswer> MyXMLHttpRequest::QueryHead(QString url, CancelToken cancel,
                                                    seconds timeout) {
  HttpAnswer answer;
  answer.failure = HttpFailure::BadAddress;
  if (HostOf(url).isEmpty()) co_return answer;
  const seconds limit = timeout.count() == 0 ? kQueryTime : timeout;
  HttpRequest request;
  request.url = API_Web::SiteRootOf(url) + PathOf(url);
  request.headers = ReloadHeaders();
  request.useSystemProxy = true;
  request.cancel = cancel;
  request.connectTimeout = limit;
  request.idleTimeout = limit;
  // Connecting, sending and receiving have the limit each; beyond that it is a trickle.
  request.headTimeout = 3 * limit;
  SecondChances chances(choices_, activity_, cancel);
  chances.AllowForCompany();
  while (true) {
    std::unique_ptr<HttpTransfer> transfer = engine_.Open(request);
    answer.head = co_await transfer->Head();
    answer.failure = answer.head.status == 0 ? transfer->Failure() : HttpFailure::None;
    const bool mayPass = answer.failure != HttpFailure::TimedOut &&  // long enough for a date
                         MayPass(answer.failure, answer.head.status);
    if (!mayPass || !chances.Left()) co_return answer;
    transfer.reset();
    const bool undisturbed = co_await chances.Pause();
    if (!undisturbed) co_return answer;
  }
}

QCoro::Task<QString> MyXMLHttpRequest::QueryHeader(QString url, HeaderSelector selector,
                                                   CancelToken cancel, seconds timeout) {
  const HttpAnswer answer = co_await QueryHead(url, cancel, timeout);
  if (answer.head.status == 0) co_return QString();
  co_return HeaderText(answer.head, selector).left(kMaxHeaderText);
}

}  // namespace zentorin
