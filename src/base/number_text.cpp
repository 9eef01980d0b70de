// SPDX-License-Identifier: MIT
#include "base/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zentorin {
namespace {

bool IsBlank(QChar c) {
  return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool IsSign(QChar c) {
  return c == u'+' || c == u'-';
}

// Reads a text character by character, passing over blanks wherever they stand.
class NumberReader {
 public:
  explicit NumberReader(QStringView text) : text_(text) { SkipBlanks(); }

  // The longest number at the start, in the form that QString::toDouble() takes; may be empty.
  QString Number() {
    TakeSign();
    const bool whole = TakeDigits();
    bool fraction = false;
    if (Next() == u'.') {
      Take();
      fraction = TakeDigits();
    }
    if (!whole && !fraction) return {};
    TakeExponent();
    return number_;
  }

 private:
  QChar Next() const { return at_ < text_.size() ? text_[at_] : QChar(); }

  void SkipBlanks() {
    while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
  }

  void Take() {
    number_.append(text_[at_]);
    ++at_;
    SkipBlanks();
  }

  void TakeSign() {
    if (IsSign(Next())) Take();
  }

  bool TakeDigits() {
    const qsizetype before = number_.size();
    while (IsDigit(Next())) Take();
    return number_.size() > before;
  }

  // An "e" that no digits follow does not belong to the number.
  void TakeExponent() {
    if (Next().toLower() != u'e') return;
    const qsizetype before = number_.size();
    Take();
    TakeSign();
    if (!TakeDigits()) number_.truncate(before);
  }

  QStringView text_;
  qsizetype at_ = 0;
  QString number_;
};

}  // namespace

double NumericValue(QStringView text) {
  // Infinite when the number is out of range.
  const double value = NumberReader(text).Number().toDouble();
  constexpr double kMax = std::numeric_limits<double>::max();
  return std::clamp(value, -kMax, kMax);
}

int WholeNumber(QStringView text) {
  using Limits = std::numeric_limits<std::int32_t>;
  // The default rounding mode of floating-point numbers is half to even.
  return static_cast<int>(std::clamp(std::nearbyint(NumericValue(text)),
                                     static_cast<double>(Limits::min()),
                                     static_cast<double>(Limits::max())));
}

QString GroupedNumber(qint64 value) {
  QString text = QString::number(value);
  const qsizetype firstDigit = value < 0 ? 1 : 0;
  for (qsizetype at = text.size() - 3; at > firstDigit; at -= 3) text.insert(at, u',');
  return text;
}

QString SecondsText(std::chrono::milliseconds time) {
  return QString::number(std::chrono::duration<double>(time).count(), 'f', 1);
}

QString PadLeft(const QString& text, int width) {
  return text.rightJustified(width, u' ');
}

QString TrimBlanks(const QString& text) {
  QStringView bare = text;
  while (bare.endsWith(u' ')) bare.chop(1);
  return TrimLeadingBlanks(bare);
}

QString TrimLeadingBlanks(QStringView text) {
  while (text.startsWith(u' ')) text = text.sliced(1);
  return text.toString();
}

}  // namespace zentorin
