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

using namespace Qt::Literals::StringLiterals;

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

using Token = std::pair<QLatin1StringView, Kind>;

// Longer tokens stand before their own beginnings.
constexpr std::array kTokens = {
    Token("am/pm"_L1, Kind::AmPm),
    Token("ampm"_L1, Kind::AmPmLocal),
    Token("a/p"_L1, Kind::AmPmLetter),
    Token("aaaa"_L1, Kind::DayNameLocal),
    Token("aaa"_L1, Kind::DayShortLocal),
    Token("c"_L1, Kind::General),
    Token("dddddd"_L1, Kind::LongDate),
    Token("ddddd"_L1, Kind::ShortDate),
    Token("dddd"_L1, Kind::DayName),
    Token("ddd"_L1, Kind::DayShort),
    Token("dd"_L1, Kind::Day2),
    Token("d"_L1, Kind::Day),
    Token("ee"_L1, Kind::EraYear2),
    Token("e"_L1, Kind::EraYear),
    Token("ggg"_L1, Kind::EraName),
    Token("gg"_L1, Kind::EraShort),
    Token("g"_L1, Kind::EraLetter),
    Token("hh"_L1, Kind::Hour2),
    Token("h"_L1, Kind::Hour),
    Token("mmmm"_L1, Kind::MonthName),
    Token("mmm"_L1, Kind::MonthShort),
    Token("mm"_L1, Kind::Month2),
    Token("m"_L1, Kind::Month),
    Token("nn"_L1, Kind::Minute2),
    Token("n"_L1, Kind::Minute),
    Token("oooo"_L1, Kind::MonthLocal),
    Token("q"_L1, Kind::Quarter),
    Token("ss"_L1, Kind::Second2),
    Token("s"_L1, Kind::Second),
    Token("ttttt"_L1, Kind::LongTime),
    Token("ww"_L1, Kind::Week),
    Token("w"_L1, Kind::WeekDay),
    Token("yyyy"_L1, Kind::Year4),
    Token("yy"_L1, Kind::Year2),
    Token("y"_L1, Kind::YearDay),
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
  const QLatin1StringView name(kDayNames[weekDay]);
  switch (kind) {
    case Kind::DayName:
      return name;
    case Kind::DayShort:
      return name.left(kShortName);
    case Kind::DayNameLocal:
      return kDayLetters[weekDay] + u"曜日"_s;
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
  const QLatin1StringView name(kMonthNames[date.month() - 1]);
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
    return afternoon ? u"午後"_s : u"午前"_s;
  }
  const QString text = afternoon ? u"PM"_s : u"AM"_s;
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
      return FormatDate(date, u"yyyy/mm/dd"_s);
    case Kind::LongDate:
      return FormatDate(date, u"yyyy年m月d日"_s);
    case Kind::LongTime:
      return FormatDate(date, u"hh:nn:ss"_s);
    default:
      return FormatDate(date, date.time() == QTime(0, 0) ? u"ddddd"_s : u"ddddd ttttt"_s);
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
