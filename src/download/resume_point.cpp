// SPDX-License-Identifier: MIT
#include "download/resume_point.h"

#include <QRegularExpression>
#include <algorithm>

#include "base/number_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kMaxLength = 9e15;

// A weak tag promises no equal bytes.
QByteArray ValidatorOf(const HttpHead& head) {
  QByteArray tag = head.Header("ETag");
  if (tag.size() > 2 && tag.startsWith('"') && tag.endsWith('"')) return tag;
  return tag.isEmpty() ? head.Header("Last-Modified") : QByteArray();
}

}  // namespace

ResumePoint::ResumePoint(const HttpHead& whole) {
  const double length = NumericValue(QString::fromLatin1(whole.Header("Content-Length")));
  length_ = static_cast<qint64>(std::clamp(length, 0.0, kMaxLength));
  const bool takesRanges = whole.Header("Accept-Ranges").trimmed().toLower() == "bytes";
  if (takesRanges && whole.Header("Content-Encoding").isEmpty()) validator_ = ValidatorOf(whole);
}

void ResumePoint::AskForRest(HttpRequest& request) const {
  if (validator_.isEmpty() || written_ == 0) return;
  const QByteArray range = "bytes=" + QByteArray::number(written_) + '-';
  request.headers.append({.name = "Range", .value = range});
  request.headers.append({.name = "If-Range", .value = validator_});
}

bool ResumePoint::ContinueBy(const HttpHead& partial) {
  static const QRegularExpression form(uR"(\Abytes (\d{1,18})-(\d{1,18})/(\d{1,18}|\*)\z)"_s,
                                       QRegularExpression::CaseInsensitiveOption);
  const QString range = QString::fromLatin1(partial.Header("Content-Range")).trimmed();
  const QRegularExpressionMatch match = form.match(range);
  if (validator_.isEmpty() || !match.hasMatch()) return false;
  const QString total = match.captured(3);
  const qint64 length = total == "*"_L1 ? length_ : total.toLongLong();
  const bool isSameLength = length > 0 && (length_ == 0 || length == length_);
  const QByteArray validator = ValidatorOf(partial);
  const bool isSameVersion = validator.isEmpty() || validator == validator_;
  const bool fits = match.captured(1).toLongLong() == written_ && isSameLength && isSameVersion &&
                    partial.Header("Content-Encoding").isEmpty();
  if (fits) length_ = length;
  return fits;
}

}  // namespace zentorin
