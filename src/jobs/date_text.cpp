// SPDX-License-Identifier: MIT
#include "jobs/date_text.h"

#include <QLocale>
#include <QRegularExpression>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QDateTime> WallTime(const QDate& date, const QTime& time) {
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

int Number(const QRegularExpressionMatch& match, const char* group) {
  return match.captured(QLatin1StringView(group)).toInt();
}

// 1 to 12 for an English month name or its first three letters, else 0.
int MonthNumber(const QString& name) {
  const QLocale english = QLocale::c();
  for (int month = 1; month <= 12; ++month) {
    for (const auto form : {QLocale::LongFormat, QLocale::ShortFormat}) {
      if (name.compare(english.monthName(month, form), Qt::CaseInsensitive) == 0) return month;
    }
  }
  return 0;
}

// Two digits mean 1970 to 2069.
int FullYear(const QString& digits) {
  const int year = digits.toInt();
  if (digits.size() > 2) return year;
  return year < 70 ? 2000 + year : 1900 + year;
}

std::optional<QDateTime> HttpDateOf(const QRegularExpressionMatch& match) {
  const QDate date(FullYear(match.captured(u"year"_s)), MonthNumber(match.captured(u"month"_s)),
                   Number(match, "day"));
  // A leap second is shown as the second before it.
  return WallTime(date, QTime(Number(match, "hour"), Number(match, "minute"),
                              qMin(Number(match, "second"), 59)));
}

// Full-width forms, as a Japanese keyboard gives them, become their ASCII ones.
QString Narrow(QString text) {
  for (QChar& c : text) {
    if (c.unicode() >= 0xFF01 && c.unicode() <= 0xFF5E) c = QChar(c.unicode() - 0xFEE0);
    if (c == QChar(0x3000)) c = u' ';
  }
  return text;
}

}  // namespace

std::optional<QDateTime> ParseHttpDate(const QString& text) {
  static const QString kWeekday =
      u"(?:(?:mon|tues?|wed(?:nes)?|thu(?:rs)?|fri|sat(?:ur)?|sun)(?:day)?)"_s;
  static const QString kTime = u"(?<hour>\\d{1,2}):(?<minute>\\d\\d)(?::(?<second>[0-5]\\d|60))?"_s;
  static const QString kZone = u"(?: *(?:gmt|utc?|z|[+-]00:?00))?"_s;
  // "Wed, 01 May 2024 12:34:56 GMT" and "Wednesday, 01-May-24 12:34:56 GMT"
  static const QRegularExpression kDayFirst(
      u"\\A\\s*(?:%1, *)?(?<day>\\d{1,2})([ "
      "-])(?<month>[a-z]+)\\g{-2}(?<year>\\d\\d(?:\\d\\d)?) +%2%3\\s*\\z"_s.arg(kWeekday, kTime,
                                                                                kZone),
      QRegularExpression::CaseInsensitiveOption);
  // "Wed May  1 12:34:56 2024"
  static const QRegularExpression kMonthFirst(
      u"\\A\\s*%1 +(?<month>[a-z]+) +(?<day>\\d{1,2}) +%2 +(?<year>\\d{4})%3\\s*\\z"_s.arg(
          kWeekday, kTime, kZone),
      QRegularExpression::CaseInsensitiveOption);
  for (const QRegularExpression* form : {&kDayFirst, &kMonthFirst}) {
    const QRegularExpressionMatch match = form->match(text);
    if (match.hasMatch()) return HttpDateOf(match);
  }
  return std::nullopt;
}

std::optional<QDateTime> ParseDateText(const QString& text) {
  static const QRegularExpression kForm(
      u"\\A *(?:(?<year>\\d{4})([/.-])(?<month>\\d{1,2})\\g{-2}(?<day>\\d{1,2}))?"
      "(?:(?<gap> +)?(?<hour>\\d{1,2}):(?<minute>\\d{1,2})(?::(?<second>\\d{1,2}))?)? *\\z"_s);
  const QRegularExpressionMatch match = kForm.match(Narrow(text));
  const bool hasDate = match.hasCaptured(u"year"_s);
  const bool hasTime = match.hasCaptured(u"hour"_s);
  if (!hasDate && !hasTime) return std::nullopt;
  if (hasDate && hasTime && !match.hasCaptured(u"gap"_s)) return std::nullopt;
  const QDate date =
      hasDate ? QDate(Number(match, "year"), Number(match, "month"), Number(match, "day"))
              : QDate(1899, 12, 30);
  return WallTime(date,
                  QTime(Number(match, "hour"), Number(match, "minute"), Number(match, "second")));
}

}  // namespace zentorin
