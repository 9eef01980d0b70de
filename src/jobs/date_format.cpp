// SPDX-License-Identifier: MIT
#include "jobs/date_format.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <vector>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

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

// What the tokens are written from.
struct Source {
  QDate date;
  QTime time;
  bool twelveHours = false;
  QStringView token;  // as it stands in the format

  // A doubled token has two digits at least, a single one no leading zero.
  QString Number(int number) const { return Digits(number, token.size()); }
  static QString Digits(int number, qsizetype width) {
    return QString::number(number).rightJustified(width, u'0');
  }
  QString Formatted(const QString& format) const {
    return FormatDate(QDateTime(date, time, Qt::UTC), format);
  }
};

const Era* EraOf(const QDate& date) {
  for (const Era& era : kEras) {
    if (date >= QDate(era.year, era.month, era.day)) return &era;
  }
  return nullptr;
}

QString Year(const Source& s) {
  return s.token.size() == 4 ? s.Number(s.date.year()) : s.Number(qAbs(s.date.year()) % 100);
}

QString YearDay(const Source& s) {
  return s.Number(s.date.dayOfYear());
}

QString Quarter(const Source& s) {
  return s.Number((s.date.month() + 2) / 3);
}

QString Month(const Source& s) {
  return s.Number(s.date.month());
}

QString MonthName(const Source& s) {
  return QLocale::c().monthName(s.date.month(),
                                s.token.size() == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
}

QString MonthLocal(const Source& s) {
  return QString::number(s.date.month()) + u'月';
}

QString Week(const Source& s) {
  const int firstWeekDay = QDate(s.date.year(), 1, 1).dayOfWeek() % 7;  // Sunday is 0
  return QString::number((s.date.dayOfYear() - 1 + firstWeekDay) / 7 + 1);
}

QString WeekDay(const Source& s) {
  return s.Number(s.date.dayOfWeek() % 7 + 1);
}

QString Day(const Source& s) {
  return s.Number(s.date.day());
}

QString DayName(const Source& s) {
  return QLocale::c().dayName(s.date.dayOfWeek(),
                              s.token.size() == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
}

QString DayNameLocal(const Source& s) {
  const QString letter(u"月火水木金土日"[s.date.dayOfWeek() - 1]);
  return s.token.size() == 3 ? letter : letter + u"曜日"_s;
}

QString EraName(const Source& s) {
  const Era* era = EraOf(s.date);
  if (era == nullptr) return {};
  if (s.token.size() == 1) return QChar::fromLatin1(era->letter);
  return QString::fromUtf16(era->name).left(s.token.size() == 2 ? 1 : -1);
}

QString EraYear(const Source& s) {
  const Era* era = EraOf(s.date);
  return s.Number(era == nullptr ? s.date.year() : s.date.year() - era->year + 1);
}

QString Hour(const Source& s) {
  return s.Number(s.twelveHours ? (s.time.hour() + 11) % 12 + 1 : s.time.hour());
}

QString HalfDay(const Source& s) {
  const bool afternoon = s.time.hour() >= 12;
  if (!s.token.contains(u'/')) return afternoon ? u"午後"_s : u"午前"_s;
  const QString text = (afternoon ? u"PM"_s : u"AM"_s).left(s.token.size() / 2);
  return s.token.front().isLower() ? text.toLower() : text;
}

QString Minute(const Source& s) {
  return s.Number(s.time.minute());
}

QString Second(const Source& s) {
  return s.Number(s.time.second());
}

QString ShortDate(const Source& s) {
  return s.Formatted(u"yyyy/mm/dd"_s);
}

QString LongDate(const Source& s) {
  return s.Formatted(u"yyyy年m月d日"_s);
}

QString LongTime(const Source& s) {
  return s.Formatted(u"hh:nn:ss"_s);
}

QString General(const Source& s) {
  return s.Formatted(s.time == QTime(0, 0) ? u"ddddd"_s : u"ddddd ttttt"_s);
}

using Writer = QString (*)(const Source&);

struct Token {
  QLatin1StringView name;
  Writer write;
};

// In either case; longer tokens stand before their own beginnings. Everything else is copied, as
// are "text" without its quotes (the second may lack) and x of \x.
constexpr std::array kTokens = {
    Token("am/pm"_L1, HalfDay),      // "AM" or "PM"; small when its first letter is
    Token("ampm"_L1, HalfDay),       // "午前" or "午後"
    Token("a/p"_L1, HalfDay),        // "A" or "P"
    Token("aaaa"_L1, DayNameLocal),  // "日曜日"
    Token("aaa"_L1, DayNameLocal),   // "日"
    Token("c"_L1, General),          // ddddd, a blank and ttttt; ddddd alone at midnight
    Token("dddddd"_L1, LongDate),    // "yyyy年m月d日"
    Token("ddddd"_L1, ShortDate),    // "yyyy/mm/dd"
    Token("dddd"_L1, DayName),       // "Sunday"
    Token("ddd"_L1, DayName),        // "Sun"
    Token("dd"_L1, Day),
    Token("d"_L1, Day),
    Token("ee"_L1, EraYear),  // of the common era before 1868
    Token("e"_L1, EraYear),
    Token("ggg"_L1, EraName),  // "令和"; empty before 1868
    Token("gg"_L1, EraName),   // "令"
    Token("g"_L1, EraName),    // "R"
    Token("hh"_L1, Hour),      // of twelve when the format holds a HalfDay
    Token("h"_L1, Hour),
    Token("mmmm"_L1, MonthName),  // "January"
    Token("mmm"_L1, MonthName),   // "Jan"
    Token("mm"_L1, Month),  // minutes when the token before, texts between not counted, is an Hour
    Token("m"_L1, Month),
    Token("nn"_L1, Minute),
    Token("n"_L1, Minute),
    Token("oooo"_L1, MonthLocal),  // "1月"
    Token("q"_L1, Quarter),
    Token("ss"_L1, Second),
    Token("s"_L1, Second),
    Token("ttttt"_L1, LongTime),  // "hh:nn:ss"
    Token("ww"_L1, Week),         // weeks begin on Sunday and week 1 holds 1 January
    Token("w"_L1, WeekDay),       // Sunday is 1
    Token("yyyy"_L1, Year),
    Token("yy"_L1, Year),
    Token("y"_L1, YearDay),
};

// A stretch of the format.
struct Piece {
  QStringView text;
  Writer write = nullptr;  // of a token; other text is copied
};

// Reads quoted, escaped or other text at the beginning of `format`; answers how many characters it
// takes.
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
    const auto* const token = std::ranges::find_if(kTokens, [format](const Token& one) {
      return format.startsWith(one.name, Qt::CaseInsensitive);
    });
    if (token == kTokens.end()) {
      format = format.sliced(ReadLiteral(format, piece));
    } else {
      piece = {.text = format.first(token->name.size()), .write = token->write};
      format = format.sliced(piece.text.size());
      if (afterHour && piece.write == Month) piece.write = Minute;
      afterHour = piece.write == Hour;
    }
    pieces.push_back(piece);
  }
  return pieces;
}

}  // namespace

QString FormatDate(const QDateTime& date, const QString& format) {
  if (!date.isValid()) return {};
  const std::vector<Piece> pieces = Split(format.isEmpty() ? u"c" : QStringView(format));
  const bool twelveHours =
      std::ranges::find(pieces, Writer{HalfDay}, &Piece::write) != pieces.end();
  QString text;
  for (const Piece& piece : pieces) {
    const Source source{date.date(), date.time(), twelveHours, piece.text};
    text += piece.write == nullptr ? piece.text.toString() : piece.write(source);
  }
  return text;
}

bool IsPlainDateFormat(const QString& format) {
  const std::vector<Piece> pieces = Split(format);
  const auto isSeparator = [](QChar c) {
    return !c.isLetterOrNumber() || u"年月日時分秒"_s.contains(c);
  };
  const auto fits = [&](const Piece& piece) {
    return piece.write != nullptr || std::ranges::all_of(piece.text, isSeparator);
  };
  const bool hasToken =
      std::ranges::any_of(pieces, [](const Piece& p) { return p.write != nullptr; });
  return hasToken && std::ranges::all_of(pieces, fits);
}

}  // namespace zentorin
