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
enum class Part {
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

using Token = std::pair<QLatin1String, Part>;

// Longer tokens stand before their own beginnings.
constexpr std::array kTokens = {
    Token(QLatin1String("am/pm"), Part::AmPm),
    Token(QLatin1String("ampm"), Part::AmPmLocal),
    Token(QLatin1String("a/p"), Part::AmPmLetter),
    Token(QLatin1String("aaaa"), Part::DayNameLocal),
    Token(QLatin1String("aaa"), Part::DayShortLocal),
    Token(QLatin1String("c"), Part::General),
    Token(QLatin1String("dddddd"), Part::LongDate),
    Token(QLatin1String("ddddd"), Part::ShortDate),
    Token(QLatin1String("dddd"), Part::DayName),
    Token(QLatin1String("ddd"), Part::DayShort),
    Token(QLatin1String("dd"), Part::Day2),
    Token(QLatin1String("d"), Part::Day),
    Token(QLatin1String("ee"), Part::EraYear2),
    Token(QLatin1String("e"), Part::EraYear),
    Token(QLatin1String("ggg"), Part::EraName),
    Token(QLatin1String("gg"), Part::EraShort),
    Token(QLatin1String("g"), Part::EraLetter),
    Token(QLatin1String("hh"), Part::Hour2),
    Token(QLatin1String("h"), Part::Hour),
    Token(QLatin1String("mmmm"), Part::MonthName),
    Token(QLatin1String("mmm"), Part::MonthShort),
    Token(QLatin1String("mm"), Part::Month2),
    Token(QLatin1String("m"), Part::Month),
    Token(QLatin1String("nn"), Part::Minute2),
    Token(QLatin1String("n"), Part::Minute),
    Token(QLatin1String("oooo"), Part::MonthLocal),
    Token(QLatin1String("q"), Part::Quarter),
    Token(QLatin1String("ss"), Part::Second2),
    Token(QLatin1String("s"), Part::Second),
    Token(QLatin1String("ttttt"), Part::LongTime),
    Token(QLatin1String("ww"), Part::Week),
    Token(QLatin1String("w"), Part::WeekDay),
    Token(QLatin1String("yyyy"), Part::Year4),
    Token(QLatin1String("yy"), Part::Year2),
    Token(QLatin1String("y"), Part::YearDay),
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
  Part part = Part::Literal;
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
    piece = {.part = token->second, .text = format.left(token->first.size())};
    format = format.sliced(token->first.size());
    if (afterHour && piece.part == Part::Month2) piece.part = Part::Minute2;
    if (afterHour && piece.part == Part::Month) piece.part = Part::Minute;
    afterHour = piece.part == Part::Hour || piece.part == Part::Hour2;
    pieces.push_back(piece);
  }
  return pieces;
}

bool IsHalfDay(const Piece& piece) {
  return piece.part == Part::AmPm || piece.part == Part::AmPmLetter ||
         piece.part == Part::AmPmLocal;
}

const Era* EraOf(const QDate& date) {
  for (const Era& era : kEras) {
    if (date >= QDate(era.year, era.month, era.day)) return &era;
  }
  return nullptr;
}

QString EraText(Part part, const QDate& date) {
  const Era* era = EraOf(date);
  const int year = era == nullptr ? date.year() : date.year() - era->year + 1;
  if (part == Part::EraYear) return Digits(year, 1);
  if (part == Part::EraYear2) return Digits(year, 2);
  if (era == nullptr) return {};
  if (part == Part::EraLetter) return QString::fromLatin1(&era->letter, 1);
  const QString name = QString::fromUtf16(era->name);
  return part == Part::EraShort ? name.left(1) : name;
}

QString DayText(Part part, const QDate& date) {
  const int weekDay = date.dayOfWeek() % 7;  // Sunday is 0
  const QLatin1String name(kDayNames[weekDay]);
  switch (part) {
    case Part::DayName:
      return name;
    case Part::DayShort:
      return name.left(kShortName);
    case Part::DayNameLocal:
      return kDayLetters[weekDay] + QStringLiteral("曜日");
    case Part::DayShortLocal:
      return kDayLetters.sliced(weekDay, 1).toString();
    case Part::Day2:
      return Digits(date.day(), 2);
    case Part::WeekDay:
      return Digits(weekDay + 1, 1);
    case Part::Week: {
      const int firstWeekDay = QDate(date.year(), 1, 1).dayOfWeek() % 7;
      return Digits((date.dayOfYear() - 1 + firstWeekDay) / 7 + 1, 1);
    }
    default:
      return Digits(date.day(), 1);
  }
}

QString MonthText(Part part, const QDate& date) {
  const QLatin1String name(kMonthNames[date.month() - 1]);
  switch (part) {
    case Part::MonthName:
      return name;
    case Part::MonthShort:
      return name.left(kShortName);
    case Part::MonthLocal:
      return Digits(date.month(), 1) + u'月';
    case Part::Quarter:
      return Digits((date.month() + 2) / 3, 1);
    case Part::Month2:
      return Digits(date.month(), 2);
    default:
      return Digits(date.month(), 1);
  }
}

QString YearText(Part part, const QDate& date) {
  if (part == Part::Year4) return Digits(date.year(), 4);
  if (part == Part::Year2) return Digits(qAbs(date.year()) % 100, 2);
  return Digits(date.dayOfYear(), 1);
}

QString HalfDayText(const Piece& piece, bool afternoon) {
  if (piece.part == Part::AmPmLocal) {
    return afternoon ? QStringLiteral("午後") : QStringLiteral("午前");
  }
  const QString text = afternoon ? QStringLiteral("PM") : QStringLiteral("AM");
  const QString shown = piece.part == Part::AmPmLetter ? text.left(1) : text;
  return piece.text.front().isLower() ? shown.toLower() : shown;
}

QString TimeText(const Piece& piece, const QTime& time, bool twelveHours) {
  const int hour = twelveHours ? (time.hour() + 11) % 12 + 1 : time.hour();
  switch (piece.part) {
    case Part::Hour2:
      return Digits(hour, 2);
    case Part::Hour:
      return Digits(hour, 1);
    case Part::Minute2:
      return Digits(time.minute(), 2);
    case Part::Minute:
      return Digits(time.minute(), 1);
    case Part::Second2:
      return Digits(time.second(), 2);
    case Part::Second:
      return Digits(time.second(), 1);
    default:
      return HalfDayText(piece, time.hour() >= 12);
  }
}

QString CompoundText(Part part, const QDateTime& date) {
  switch (part) {
    case Part::ShortDate:
      return FormatDate(date, QStringLiteral("yyyy/mm/dd"));
    case Part::LongDate:
      return FormatDate(date, QStringLiteral("yyyy年m月d日"));
    case Part::LongTime:
      return FormatDate(date, QStringLiteral("hh:nn:ss"));
    default:
      return FormatDate(date, date.time() == QTime(0, 0) ? QStringLiteral("ddddd")
                                                         : QStringLiteral("ddddd ttttt"));
  }
}

QString PieceText(const Piece& piece, const QDateTime& date, bool twelveHours) {
  if (piece.part == Part::Literal) return piece.text.toString();
  if (piece.part <= Part::YearDay) return YearText(piece.part, date.date());
  if (piece.part <= Part::MonthLocal) return MonthText(piece.part, date.date());
  if (piece.part <= Part::Day) return DayText(piece.part, date.date());
  if (piece.part <= Part::EraYear) return EraText(piece.part, date.date());
  if (piece.part <= Part::Second) return TimeText(piece, date.time(), twelveHours);
  return CompoundText(piece.part, date);
}

}  // namespace

QString FormatDate(const QDateTime& date, const QString& format) {
  if (!date.isValid()) return {};
  if (format.isEmpty()) return CompoundText(Part::General, date);
  const std::vector<Piece> pieces = Split(format);
  const bool twelveHours = std::ranges::any_of(pieces, IsHalfDay);
  QString text;
  for (const Piece& piece : pieces) text += PieceText(piece, date, twelveHours);
  return text;
}

}  // namespace zentorin
