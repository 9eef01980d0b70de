// SPDX-License-Identifier: MIT
#include "net/my_xml_http_request.h"

#include <array>
#include <utility>

#include "base/ansi_text.h"
#include "base/product_name.h"
#include "net/api_web.h"
#include "net/decode_addo.h"
#include "net/modjudg.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

using std::chrono::seconds;

constexpr seconds kPageTime{20};
constexpr seconds kQueryTime{15};
constexpr qsizetype kMaxHeaderText = 1024;

HttpRequest PageRequest(const QString& url, const CancelToken& cancel) {
  HttpRequest request;
  request.url = url;
  request.userAgent = ProductName().toLatin1();
  request.totalTimeout = kPageTime;
  request.maxBodyBytes = MyXMLHttpRequest::kMaxPageBytes;
  request.acceptCompressed = true;
  request.useSystemProxy = true;
  request.cancel = cancel;
  return request;
}

// What an answer comes to before its text is looked at.
FetchedPage PageOf(const HttpAnswer& answer, const CancelToken& cancel) {
  FetchedPage page;
  page.failure = cancel.Cancelled() ? HttpFailure::Cancelled : answer.failure;
  page.httpStatus = answer.head.status;
  page.finalUrl = answer.head.finalUrl;
  return page;
}

// When an answer came, even one that is not whole, the next stage would only load it again.
bool EndsChain(const FetchedPage& page) {
  return page.httpStatus != 0 || IsFinal(page.failure);
}

// The charset parameter of a Content-Type value, "" when there is none.
QString CharsetOfType(const QByteArray& contentType) {
  for (const QByteArray& part : contentType.split(';').mid(1)) {
    const qsizetype equals = part.indexOf('=');
    if (equals < 0 || part.left(equals).trimmed().toLower() != "charset") continue;
    QByteArray name = part.mid(equals + 1).trimmed();
    if (name.startsWith('"') || name.startsWith('\'')) name = name.mid(1, name.size() - 2);
    return QString::fromLatin1(name.trimmed());
  }
  return {};
}

QString CharsetOfMark(const QByteArray& bytes) {
  if (bytes.startsWith("\xEF\xBB\xBF")) return u"UTF-8"_s;
  if (bytes.startsWith("\xFF\xFE")) return u"UTF-16LE"_s;
  if (bytes.startsWith("\xFE\xFF")) return u"UTF-16BE"_s;
  return {};
}

// What the answer says of itself: its header, then its byte-order mark.
QStringList OutwardCharsets(const HttpAnswer& answer) {
  return {CharsetOfType(answer.head.Header("Content-Type")), CharsetOfMark(answer.body)};
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

QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchPageText(QString url, CancelToken cancel) {
  FetchedPage page = co_await LoadDocument(url, cancel);
  if (EndsChain(page)) co_return page;
  page = co_await FetchWithXmlHttp(url, true, QByteArray(), cancel);
  if (EndsChain(page)) co_return page;
  page = co_await FetchWholeBody(url, cancel);
  co_return page;
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::LoadDocument(QString url, CancelToken cancel) {
  HttpRequest request = PageRequest(url, cancel);
  const HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
  FetchedPage page = PageOf(answer, cancel);
  if (page.Ok()) {
    QStringList charsets = OutwardCharsets(answer);
    charsets.append(modJUDG::DeclaredCharset(answer.body));
    page.text = Decode_ADDO::DecodeDocument(answer.body, charsets);
  }
  co_return page;
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchWithXmlHttp(QString url, bool decode,
                                                            QByteArray ifModifiedSince,
                                                            CancelToken cancel) {
  FetchedPage page;
  page.failure = HttpFailure::BadAddress;
  if (url.isEmpty()) co_return page;
  HttpRequest request = PageRequest(url, cancel);
  request.headers.append(HttpHeader{.name = "If-Modified-Since", .value = ifModifiedSince});
  request.headers.append(
      HttpHeader{.name = "Content-Type", .value = "application/x-www-form-urlencoded"});
  const HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
  page = PageOf(answer, cancel);
  if (!page.Ok()) co_return page;
  if (decode) {
    const QString charset = modJUDG::CharsetOfPage(answer.body);
    page.text = Decode_ADDO::DecodeByTable(answer.body, charset);
  } else {
    QStringList charsets = OutwardCharsets(answer);
    charsets.append(u"UTF-8"_s);
    page.text = Decode_ADDO::DecodeDocument(answer.body, charsets);
  }
  co_return page;
}

QCoro::Task<FetchedPage> MyXMLHttpRequest::FetchWholeBody(QString url, CancelToken cancel) {
  HttpRequest request = PageRequest(url, cancel);
  request.headers = ReloadHeaders();
  request.acceptCompressed = false;
  request.useSystemProxy = false;
  const HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
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
  request.totalTimeout = 3 * limit;
  const std::unique_ptr<HttpTransfer> transfer = engine_.Open(std::move(request));
  answer.head = co_await transfer->Head();
  answer.failure = answer.head.status == 0 ? transfer->Failure() : HttpFailure::None;
  co_return answer;
}

QCoro::Task<QString> MyXMLHttpRequest::QueryHeader(QString url, HeaderSelector selector,
                                                   CancelToken cancel, seconds timeout) {
  const HttpAnswer answer = co_await QueryHead(url, cancel, timeout);
  if (answer.head.status == 0) co_return QString();
  co_return HeaderText(answer.head, selector).left(kMaxHeaderText);
}

}  // namespace zentorin
