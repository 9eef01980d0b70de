// SPDX-License-Identifier: MIT
#include "net/pattern.h"

#include <QDeadlineTimer>
#include <algorithm>
#include <chrono>

#include "base/utf16.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QRegularExpression::PatternOptions kOptions =
    QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption;

// Up to this length the quick way costs milliseconds even when the expression is cubic.
constexpr qsizetype kQuickLength = 2'048;

constexpr std::chrono::milliseconds kSearchTime{1000};

// Half a surrogate pair makes the engine refuse the whole text; U+FFFD stands in for it. The text
// itself when it is sound, else `repaired`.
QStringView WellFormed(QStringView text, QString& repaired) {
  if (text.isValidUtf16()) return text;
  repaired = text.toString();
  for (qsizetype i = 0; i < repaired.size(); i += UnitsAt(repaired, i)) {
    const bool half = repaired.at(i).isSurrogate() && UnitsAt(repaired, i) == 1;
    if (half) repaired[i] = QChar::ReplacementCharacter;
  }
  return repaired;
}

// A text that is cut keeps its last surrogate pair whole.
QStringView Beginning(QStringView text, qsizetype length) {
  if (text.size() <= length) return text;
  return text.first(text[length].isLowSurrogate() ? length - 1 : length);
}

qsizetype NextStart(QStringView text, qsizetype offset) {
  return offset + (offset < text.size() ? UnitsAt(text, offset) : 1);
}

// Where to look on after a match. An empty match is followed by the next start position.
qsizetype OffsetAfter(const QRegularExpressionMatch& match, QStringView text, qsizetype offset) {
  const qsizetype end = match.capturedEnd();
  const bool empty = end <= match.capturedStart() || end <= offset;
  return empty ? NextStart(text, std::max(end, offset)) : end;
}

}  // namespace

Pattern::Pattern(const QString& expression)
    : expression_(expression), quick_(expression, kOptions) {
  // Without its compiled form the engine counts every step against its limit.
  if (quick_.isValid()) careful_ = QRegularExpression(u"(*NO_JIT)"_s + expression, kOptions);
}

QString Pattern::Fault() const {
  if (!quick_.isValid()) {
    return u"正規表現「%1」に誤りがあります（%2 文字目: %3）。"_s.arg(
        expression_, QString::number(quick_.patternErrorOffset() + 1), quick_.errorString());
  }
  if (GaveUp()) {
    return u"正規表現「%1」は照合に時間が掛かり過ぎるため、以後の照合を中止しました。"_s.arg(
        expression_);
  }
  if (runaways_ > 0) {
    return u"正規表現「%1」の照合に時間が掛かり過ぎたため、%2 回打ち切りました。"_s.arg(
        expression_, QString::number(runaways_));
  }
  return {};
}

QStringList Pattern::Candidates(QStringView text) {
  QStringList found;
  if (!IsValid() || GaveUp()) return found;
  QString repaired;
  const QStringView subject = WellFormed(Beginning(text, kMaxTextLength), repaired);
  const bool done = subject.size() <= kQuickLength && SearchQuickly(subject, found);
  if (!done && !SearchCarefully(subject, found)) ++runaways_;
  return found;
}

QString Pattern::First(const QString& text) {
  if (expression_.isEmpty()) return text;
  if (!IsValid() || GaveUp()) return {};
  QString repaired;
  const QRegularExpressionMatch match = quick_.match(WellFormed(text, repaired));
  if (!match.isValid()) ++runaways_;
  return match.hasMatch() ? Taken(match) : QString();
}

// False, with nothing found, when the engine gave up; that may be for want of stack only.
bool Pattern::SearchQuickly(QStringView text, QStringList& found) const {
  for (qsizetype offset = 0; offset <= text.size();) {
    const QRegularExpressionMatch match =
        quick_.match(text, offset, QRegularExpression::NormalMatch,
                     QRegularExpression::DontCheckSubjectStringMatchOption);
    if (!match.isValid()) {
      found.clear();
      return false;
    }
    if (!match.hasMatch()) break;
    found.append(Taken(match));
    offset = OffsetAfter(match, text, offset);
  }
  return true;
}

// False when the search ran away; what was found before stays.
bool Pattern::SearchCarefully(QStringView text, QStringList& found) {
  const QDeadlineTimer deadline(kSearchTime);
  for (qsizetype offset = 0; offset <= text.size();) {
    const QRegularExpressionMatch match =
        careful_.match(text, offset, QRegularExpression::NormalMatch,
                       QRegularExpression::AnchorAtOffsetMatchOption |
                           QRegularExpression::DontCheckSubjectStringMatchOption);
    if (!match.isValid() || deadline.hasExpired()) return false;
    if (match.hasMatch()) found.append(Taken(match));
    offset = match.hasMatch() ? OffsetAfter(match, text, offset) : NextStart(text, offset);
  }
  return true;
}

QString Pattern::Taken(const QRegularExpressionMatch& match) const {
  return match.captured(quick_.captureCount() > 0 ? 1 : 0);
}

}  // namespace zentorin
