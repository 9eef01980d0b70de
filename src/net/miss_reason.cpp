// SPDX-License-Identifier: MIT
#include "net/miss_reason.h"

#include <QStringList>

#include "base/number_text.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

MissKind KindOf(HttpFailure failure, int httpStatus) {
  switch (failure) {
    case HttpFailure::None:
      if (httpStatus == kHttpOk) return MissKind::None;
      return IsGone(httpStatus) ? MissKind::Gone : MissKind::HttpStatus;
    case HttpFailure::NoName:
      return MissKind::NoName;
    case HttpFailure::NoConnection:
    case HttpFailure::HostDown:
      return MissKind::NoConnection;
    case HttpFailure::NoTrust:
      return MissKind::NoTrust;
    case HttpFailure::TimedOut:
    case HttpFailure::TooSlow:
      return MissKind::TimedOut;
    case HttpFailure::CutOff:
      return MissKind::CutOff;
    case HttpFailure::TooLarge:
      return MissKind::TooLarge;
    case HttpFailure::BadRedirect:
      return MissKind::BadRedirect;
    case HttpFailure::BadAddress:
    case HttpFailure::BadAnswer:
    case HttpFailure::NoDescriptor:
    case HttpFailure::Dropped:
      return MissKind::Other;
    case HttpFailure::Cancelled:
      return MissKind::None;
  }
  return MissKind::Other;
}

QString LabelOf(MissKind kind) {
  switch (kind) {
    case MissKind::None:
      break;
    case MissKind::Gone:
      return u"リンク切れ"_s;
    case MissKind::HttpStatus:
      return u"HTTP エラー"_s;
    case MissKind::NoConnection:
      return u"接続できない"_s;
    case MissKind::NoName:
      return u"ホスト名不明"_s;
    case MissKind::NoTrust:
      return u"証明書エラー"_s;
    case MissKind::CutOff:
      return u"途中で切断"_s;
    case MissKind::TimedOut:
      return u"時間切れ"_s;
    case MissKind::TooLarge:
      return u"大きすぎる"_s;
    case MissKind::BadRedirect:
      return u"転送エラー"_s;
    case MissKind::Expression:
      return u"正規表現で中止"_s;
    case MissKind::NotSaved:
      return u"保存できない"_s;
    case MissKind::NotRecorded:
      return u"録画できない"_s;
    case MissKind::Other:
      return u"その他"_s;
  }
  return {};
}

}  // namespace

bool IsFailure(MissKind kind) {
  return kind != MissKind::None && kind != MissKind::Gone;
}

MissReason MissReason::Of(const QString& part) const {
  if (kind == MissKind::None) return *this;
  return {kind, u"%1を取得できません（%2）"_s.arg(part, text)};
}

MissReason MissReasonOf(HttpFailure failure, int httpStatus, const QString& url,
                        std::optional<BytesReceived> bytes) {
  // A server that says so has said all, whatever became of the rest of its answer.
  if (IsGone(httpStatus) && failure != HttpFailure::Cancelled) failure = HttpFailure::None;
  MissReason reason;
  reason.kind = KindOf(failure, httpStatus);
  if (reason.kind == MissKind::None) return reason;
  reason.text = WhyNoAnswer(failure, httpStatus, HostOf(url));
  if (bytes) {
    const QString whole = bytes->announced > 0 ? GroupedNumber(bytes->announced) : u"?"_s;
    reason.text += u"（%1 / %2 バイト）"_s.arg(GroupedNumber(bytes->received), whole);
  }
  return reason;
}

MissReason MissReasonOf(const FetchedPage& page, const QString& url) {
  const QString& answered = page.finalUrl.isEmpty() ? url : page.finalUrl;
  return MissReasonOf(page.failure, page.httpStatus, answered, page.bytes);
}

void MissCounts::Add(const MissCounts& other) {
  for (size_t kind = 0; kind < kMissKinds; ++kind) counts_[kind] += other.counts_[kind];
}

bool MissCounts::AnyFailure() const {
  for (size_t kind = 0; kind < kMissKinds; ++kind) {
    if (counts_[kind] > 0 && IsFailure(MissKind(kind))) return true;
  }
  return false;
}

QString MissCounts::Text() const {
  QStringList texts;
  for (size_t kind = 0; kind < kMissKinds; ++kind) {
    const QString label = LabelOf(MissKind(kind));
    if (counts_[kind] == 0 || label.isEmpty()) continue;
    texts += label + u' ' + GroupedNumber(counts_[kind]);
  }
  return texts.join(u'・');
}

}  // namespace zentorin
