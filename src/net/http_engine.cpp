// SPDX-License-Identifier: MIT
#include "net/http_engine.h"

#include <utility>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString FailureText(HttpFailure failure) {
  switch (failure) {
    case HttpFailure::None:
      break;
    case HttpFailure::BadAddress:
      return u"http または https のアドレスではありません"_s;
    case HttpFailure::NoName:
      return u"ホスト名が見つかりません"_s;
    case HttpFailure::NoConnection:
      return u"接続できません"_s;
    case HttpFailure::HostDown:
      return u"続けて接続できなかったため、しばらく要求しません"_s;
    case HttpFailure::NoTrust:
      return u"安全な接続を確立できません（証明書など）"_s;
    case HttpFailure::TimedOut:
      return u"時間内に応答がありません"_s;
    case HttpFailure::TooSlow:
      return u"遅すぎます"_s;
    case HttpFailure::CutOff:
      return u"応答が途中で切れました"_s;
    case HttpFailure::TooLarge:
      return u"応答が大きすぎます"_s;
    case HttpFailure::BadAnswer:
      return u"応答が正しくありません"_s;
    case HttpFailure::BadRedirect:
      return u"転送が多すぎるか、転送先が http・https ではありません"_s;
    case HttpFailure::NoDescriptor:
      return u"開けるファイルと接続の数を超えました"_s;
    case HttpFailure::Dropped:
      return u"先に送った要求を取り消しました"_s;
    case HttpFailure::Cancelled:
      return u"キャンセルされました"_s;
  }
  return {};
}

}  // namespace

bool IsFinal(HttpFailure failure) {
  return failure == HttpFailure::BadAddress || failure == HttpFailure::HostDown ||
         failure == HttpFailure::NoTrust || failure == HttpFailure::BadRedirect ||
         failure == HttpFailure::TooLarge || failure == HttpFailure::Cancelled;
}

bool IsGone(int httpStatus) {
  constexpr int kNotFound = 404;
  constexpr int kGone = 410;
  return httpStatus == kNotFound || httpStatus == kGone;
}

QString WhyNoAnswer(HttpFailure failure, int httpStatus, const QString& host) {
  QString why = FailureText(failure);
  if (why.isEmpty() && httpStatus != kHttpOk) why = u"HTTP %1"_s.arg(httpStatus);
  return why.isEmpty() || host.isEmpty() ? why : host + u": "_s + why;
}

QList<HttpHeader> ReloadHeaders() {
  return {{.name = "Cache-Control", .value = "no-cache"}, {.name = "Pragma", .value = "no-cache"}};
}

QByteArray HttpHead::Header(const char* name) const {
  for (const HttpHeader& header : headers) {
    if (header.name.compare(name, Qt::CaseInsensitive) == 0) return header.value;
  }
  return {};
}

QCoro::Task<void> ReadBody(HttpTransfer& transfer, HttpAnswer& answer, ReadGate* gate) {
  while (true) {
    const QByteArray block = co_await transfer.NextBlock();
    if (block.isEmpty()) break;
    answer.body += block;
    if (gate != nullptr) co_await gate->Pass(block.size());
  }
  answer.failure = transfer.Failure();
}

QCoro::Task<HttpAnswer> FetchWhole(HttpEngine& engine, HttpRequest request) {
  const std::unique_ptr<HttpTransfer> transfer = engine.Open(std::move(request));
  HttpAnswer answer;
  answer.head = co_await transfer->Head();
  co_await ReadBody(*transfer, answer);
  co_return answer;
}

}  // namespace zentorin
