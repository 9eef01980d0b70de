// SPDX-License-Identifier: MIT
#include "jobs/date_format.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

// The tokens, longest first at every place of the format, in either case. Everything else is
// copied.
//
//   yyyy yy y     year in four and in two digits; day of the year
//   q             quarter
//   mmmm mmm      "January", "Jan"
//   mm m          month; minutes when the token before, texts between not counted, is h or hh
//   oooo          "1月"
//   ww w          week of the year, weeks begin on Sunday and week 1 holds 1 January; day of the
//                 week, Sunday is 1
//   dddd ddd      "Sunday", "Sun"
//   aaaa aaa      "日曜日", "日"
//   dd d          day
//   ggg gg g      era: "令和", "令", "R"; empty before 1868
//   ee e          year of the era; of the common era before 1868
//   hh h          hour, of twelve when the format holds a token of the next line
//   AM/PM A/P     "AM" or "PM", "A" or "P", small when the token's first letter is
//   AMPM          "午前" or "午後"
//   nn n  ss s    minute, second
//   ddddd         "yyyy/mm/dd"
//   dddddd        "yyyy年m月d日"
//   ttttt         "hh:nn:ss"
//   c             ddddd, a blank and ttttt; ddddd alone at midnight
//   / :           the separators of dates and times, which are these same characters
//   "text"        the text as it is; without a second quote up to the end
//   \x            the character x as it is
//
// Doubled tokens ("yy") have two digits at least, single ones no leading zero.

namespace zentorin {

namespace {

// Grouped by what they are made from; PieceText() goes by the order.
enum class Kind {
  Literal,
  Year4,
  Year2,
  YearDay,
  Quarter,
  MonthName,
  MonthShort,
  Month2,
  Month,
  MonthLocal,
  Week,
  WeekDay,
  DayName,
  DayShort,
  DayNameLocal,
  DayShortLocal,
  Day2,
  Day,
  EraName,
  EraShort,
  EraLetter,
  EraYear2,
  EraYear,
  Hour2,
  Hour,
  AmPm,
  AmPmLetter,
  AmPmLocal,
  Minute2,
  Minute,
  Second2,
  Second,
  ShortDate,
  LongDate,
  LongTime,
  General,
};

using Token = std::pair<QLatin1String, Kind>;

// Longer tokens stand before their own beginnings.
constexpr std::array kTokens = {
    Token(QLatin1String("am/pm"), Kind::AmPm),
    Token(QLatin1String("ampm"), Kind::AmPmLocal),
    Token(QLatin1String("a/p"), Kind::AmPmLetter),
    Token(QLatin1String("aaaa"), Kind::DayNameLocal),
    Token(QLatin1String("aaa"), Kind::DayShortLocal),
    Token(QLatin1String("c"), Kind::General),
    Token(QLatin1String("dddddd"), Kind::LongDate),
    Token(QLatin1String("ddddd"), Kind::ShortDate),
    Token(QLatin1String("dddd"), Kind::DayName),
    Token(QLatin1String("ddd"), Kind::DayShort),
    Token(QLatin1String("dd"), Kind::Day2),
    Token(QLatin1String("d"), Kind::Day),
    Token(QLatin1String("ee"), Kind::EraYear2),
    Token(QLatin1String("e"), Kind::EraYear),
    Token(QLatin1String("ggg"), Kind::EraName),
    Token(QLatin1String("gg"), Kind::EraShort),
    Token(QLatin1String("g"), Kind::EraLetter),
    Token(QLatin1String("hh"), Kind::Hour2),
    Token(QLatin1String("h"), Kind::Hour),
    Token(QLatin1String("mmmm"), Kind::MonthName),
    Token(QLatin1String("mmm"), Kind::MonthShort),
    Token(QLatin1String("mm"), Kind::Month2),
    Token(QLatin1String("m"), Kind::Month),
    Token(QLatin1String("nn"), Kind::Minute2),
    Token(QLatin1String("n"), Kind::Minute),
    Token(QLatin1String("oooo"), Kind::MonthLocal),
    Token(QLatin1String("q"), Kind::Quarter),
    Token(QLatin1String("ss"), Kind::Second2),
    Token(QLatin1String("s"), Kind::Second),
    Token(QLatin1String("ttttt"), Kind::LongTime),
    Token(QLatin1String("ww"), Kind::Week),
    Token(QLatin1String("w"), Kind::WeekDay),
    Token(QLatin1String("yyyy"), Kind::Year4),
    Token(QLatin1String("yy"), Kind::Year2),
    Token(QLatin1String("y"), Kind::YearDay),
};

struct Era {
  const char16_t* name;
  int year, month, day;  // its first day
  char letter;
};

// Newest first.
constexpr std::array kEras = {
    Era{.name = u"令和", .year = 2019, .month = 5, .day = 1, .letter = 'R'},
    Era{.name = u"平成", .year = 1989, .month = 1, .day = 8, .letter = 'H'},
    Era{.name = u"昭和", .year = 1926, .month = 12, .day = 25, .letter = 'S'},
    Era{.name = u"大正", .year = 1912, .month = 7, .day = 30, .letter = 'T'},
    Era{.name = u"明治", .year = 1868, .month = 1, .day = 1, .letter = 'M'},
};

constexpr std::array kMonthNames = {"January",   "February", "March",    "April",
                                    "May",       "June",     "July",     "August",
                                    "September", "October",  "November", "December"};
constexpr std::array kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};
constexpr int kShortName = 3;
constexpr QStringView kDayLetters = u"日月火水木金土";

QString Digits(int number, int width) {
  return QString::number(number).rightJustified(width, u'0');
}

const Token* TokenAt(QStringView format) {
  for (const Token& token : kTokens) {
    if (format.startsWith(token.first, Qt::CaseInsensitive)) return &token;
  }
  return nullptr;
}

// A stretch of the format: a token as it is written there, or text to copy.
struct Piece {
  Kind kind = Kind::Literal;
  QStringView text;
};

// Reads quoted and escaped text at the beginning of `format`; answers how many characters it takes.
qsizetype ReadLiteral(QStringView format, Piece& piece) {
  if (format.front() == u'\\' && format.size() > 1) {
    piece.text = format.mid(1, 1);
    return 2;
  }
  if (format.front() != u'"') {
    piece.text = format.left(1);
    return 1;
  }
  const qsizetype quote = format.indexOf(u'"', 1);
  const qsizetype end = quote < 0 ? format.size() : quote;
  piece.text = format.sliced(1, end - 1);
  return quote < 0 ? end : end + 1;
}

std::vector<Piece> Split(QStringView format) {
  std::vector<Piece> pieces;
  bool afterHour = false;
  while (!format.isEmpty()) {
    Piece piece;
    const Token* token = TokenAt(format);
    if (token == nullptr) {
      format = format.sliced(ReadLiteral(format, piece));
      pieces.push_back(piece);
      continue;
    }
    piece = {.kind = token->second, .text = format.left(token->first.size())};
    format = format.sliced(token->first.size());
    if (afterHour && piece.kind == Kind::Month2) piece.kind = Kind::Minute2;
    if (afterHour && piece.kind == Kind::Month) piece.kind = Kind::Minute;
    afterHour = piece.kind == Kind::Hour || piece.kind == Kind::Hour2;
    pieces.push_back(piece);
  }
  return pieces;
}

bool IsHalfDay(const Piece& piece) {
  return piece.kind == Kind::AmPm || piece.kind == Kind::AmPmLetter ||
         piece.kind == Kind::AmPmLocal;
}

const Era* EraOf(const QDate& date) {
  for (const Era& era : kEras) {
    if (date >= QDate(era.year, era.month, era.day)) return &era;
  }
  return nullptr;
}

QString EraText(Kind kind, const QDate& date) {
  const Era* era = EraOf(date);
  const int year = era == nullptr ? date.year() : date.year() - era->year + 1;
  if (kind == Kind::EraYear) return Digits(year, 1);
  if (kind == Kind::EraYear2) return Digits(year, 2);
  if (era == nullptr) return {};
  if (kind == Kind::EraLetter) return QString::fromLatin1(&era->letter, 1);
  const QString name = QString::fromUtf16(era->name);
  return kind == Kind::EraShort ? name.left(1) : name;
}

QString DayText(Kind kind, const QDate& date) {
  const int weekDay = date.dayOfWeek() % 7;  // Sunday is 0
  const QLatin1String name(kDayNames[weekDay]);
  switch (kind) {
    case Kind::DayName:
      return name;
    case Kind::DayShort:
      return name.left(kShortName);
    case Kind::DayNameLocal:
      return kDayLetters[weekDay] + QStringLiteral("曜日");
    case Kind::DayShortLocal:
      return kDayLetters.sliced(weekDay, 1).toString();
    case Kind::Day2:
      return Digits(date.day(), 2);
    case Kind::WeekDay:
      return Digits(weekDay + 1, 1);
    case Kind::Week: {
      const int firstWeekDay = QDate(date.year(), 1, 1).dayOfWeek() % 7;
      return Digits((date.dayOfYear() - 1 + firstWeekDay) / 7 + 1, 1);
    }
    default:
      return Digits(date.day(), 1);
  }
}

QString MonthText(Kind kind, const QDate& date) {
  const QLatin1String name(kMonthNames[date.month() - 1]);
  switch (kind) {
    case Kind::MonthName:
      return name;
    case Kind::MonthShort:
      return name.left(kShortName);
    case Kind::MonthLocal:
      return Digits(date.month(), 1) + u'月';
    case Kind::Quarter:
      return Digits((date.month() + 2) / 3, 1);
    case Kind::Month2:
      return Digits(date.month(), 2);
    default:
      return Digits(date.month(), 1);
  }
}

QString YearText(Kind kind, const QDate& date) {
  if (kind == Kind::Year4) return Digits(date.year(), 4);
  if (kind == Kind::Year2) return Digits(qAbs(date.year()) % 100, 2);
  return Digits(date.dayOfYear(), 1);
}

QString HalfDayText(const Piece& piece, bool afternoon) {
  if (piece.kind == Kind::AmPmLocal) {
    return afternoon ? QStringLiteral("午後") : QStringLiteral("午前");
  }
  const QString text = afternoon ? QStringLiteral("PM") : QStringLiteral("AM");
  const QString shown = piece.kind == Kind::AmPmLetter ? text.left(1) : text;
  return piece.text.front().isLower() ? shown.toLower() : shown;
}

QString TimeText(const Piece& piece, const QTime& time, bool twelveHours) {
  const int hour = twelveHours ? (time.hour() + 11) % 12 + 1 : time.hour();
  switch (piece.kind) {
    case Kind::Hour2:
      return Digits(hour, 2);
    case Kind::Hour:
      return Digits(hour, 1);
    case Kind::Minute2:
      return Digits(time.minute(), 2);
    case Kind::Minute:
      return Digits(time.minute(), 1);
    case Kind::Second2:
      return Digits(time.second(), 2);
    case Kind::Second:
      return Digits(time.second(), 1);
    default:
      return HalfDayText(piece, time.hour() >= 12);
  }
}

QString CompoundText(Kind kind, const QDateTime& date) {
  switch (kind) {
    case Kind::ShortDate:
      return FormatDate(date, QStringLiteral("yyyy/mm/dd"));
    case Kind::LongDate:
      return FormatDate(date, QStringLiteral("yyyy年m月d日"));
    case Kind::LongTime:
      return FormatDate(date, QStringLiteral("hh:nn:ss"));
    default:
      return FormatDate(date, date.time() == QTime(0, 0) ? QStringLiteral("ddddd")
                                                         : QStringLiteral("ddddd ttttt"));
  }
}

QString PieceText(const Piece& piece, const QDateTime& date, bool twelveHours) {
  if (piece.kind == Kind::Literal) return piece.text.toString();
  if (piece.kind <= Kind::YearDay) return YearText(piece.kind, date.date());
  if (piece.kind <= Kind::MonthLocal) return MonthText(piece.kind, date.date());
  if (piece.kind <= Kind::Day) return DayText(piece.kind, date.date());
  if (piece.kind <= Kind::EraYear) return EraText(piece.kind, date.date());
  if (piece.kind <= Kind::Second) return TimeText(piece, date.time(), twelveHours);
  return CompoundText(piece.kind, date);
}

}  // namespace

QString FormatDate(const QDateTime& date, const QString& format) {
  if (!date.isValid()) return {};
  if (format.isEmpty()) return CompoundText(Kind::General, date);
  const std::vector<Piece> pieces = Split(format);
  const bool twelveHours = std::ranges::any_of(pieces, IsHalfDay);
  QString text;
  for (const Piece& piece : pieces) text += PieceText(piece, date, twelveHours);
  return text;
}

}  // namespace zentorin
