// SPDX-License-Identifier: MIT
#include "net/modjudg.h"

#include <algorithm>
#include <array>

#include "net/charset_tally.h"

namespace zentorin::modJUDG {

using namespace Qt::Literals::StringLiterals;

namespace {

using Charsets::Tally;

// The window of the Shift_JIS and the UNICODE scorer, and what single bytes count in for all.
constexpr qsizetype kWindow = Charsets::kSingleByteWindow;
// How much of a body the others look at.
constexpr qsizetype kScanned = 1 << 20;

QByteArrayView Beginning(QByteArrayView bytes, qsizetype length) {
  return bytes.first(std::min(bytes.size(), length));
}

int Score(const Tally& tally, bool certain) {
  constexpr qint64 kFaultCost = 8;
  if (certain) return kCertain;
  const qint64 score = tally.points - kFaultCost * tally.faults;
  return static_cast<int>(std::clamp<qint64>(score, 0, kCertain - 1));
}

bool Fits(const Tally& tally) {
  return tally.faults == 0 && tally.sequences > 0;
}

quint8 At(QByteArrayView bytes, qsizetype i) {
  return static_cast<quint8>(bytes[i]);
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameLetter(char a, char b) {
  return Lower(a) == Lower(b);
}

qsizetype Find(QByteArrayView bytes, QByteArrayView word, qsizetype from) {
  const auto* const found =
      std::search(bytes.begin() + from, bytes.end(), word.begin(), word.end(), SameLetter);
  return found == bytes.end() ? -1 : found - bytes.begin();
}

qsizetype FindLast(QByteArrayView bytes, QByteArrayView word, qsizetype from) {
  const auto* const found =
      std::find_end(bytes.begin() + from, bytes.end(), word.begin(), word.end(), SameLetter);
  return found == bytes.end() ? -1 : found - bytes.begin();
}

qsizetype FindAnyOf(QByteArrayView bytes, QByteArrayView set, qsizetype from) {
  return std::find_first_of(bytes.begin() + from, bytes.end(), set.begin(), set.end()) -
         bytes.begin();
}

constexpr QByteArrayView kMeta("<meta");

// A name runs to a quote, a blank or the end of the tag; a quote that opens it is left out.
QString NameAt(QByteArrayView bytes, qsizetype at) {
  if (at < bytes.size() && (bytes[at] == '"' || bytes[at] == '\'')) ++at;
  return QString::fromLatin1(bytes.sliced(at, FindAnyOf(bytes, "\"' >", at) - at)).trimmed();
}

// `<meta.+charset=([^"' >]+)?` without regard to case: of a line with a meta tag the last
// "charset=" counts, in whatever tag that stands. Only a quote that follows the equals sign is
// taken as an opening one, so that quoted names are read too.
QString NameByExpression(QByteArrayView bytes) {
  constexpr QByteArrayView kCharset("charset=");
  for (qsizetype meta = Find(bytes, kMeta, 0); meta >= 0;) {
    const qsizetype lineEnd = FindAnyOf(bytes, "\n", meta);
    const qsizetype start = meta + kMeta.size() + 1;
    const qsizetype charset =
        start < lineEnd ? FindLast(bytes.first(lineEnd), kCharset, start) : -1;
    if (charset >= 0) return NameAt(bytes, charset + kCharset.size());
    meta = Find(bytes, kMeta, lineEnd);
  }
  return {};
}

}  // namespace

// Seven-bit bytes with an escape that selects a Japanese set, followed by a character of it, can
// be nothing else. Otherwise ten points an escape.
int ScoreJis(QByteArrayView bytes) {
  const Tally tally = Charsets::TallyJis(Beginning(bytes, kScanned));
  return Score(tally, Fits(tally));
}

// Otherwise three points for each byte pair of an ASCII character, and of a kana once there is such
// a one.
int ScoreUnicode(QByteArrayView bytes) {
  const QByteArrayView window = Beginning(bytes, kWindow);
  const bool hasMark = window.toByteArray().contains("\xFF\xFE");
  if (hasMark || Charsets::OrderOfUtf16(window) != Charsets::ByteOrder::None) return kCertain;
  int ascii = 0;
  int kana = 0;
  for (qsizetype i = 0; i + 1 < window.size(); i += 2) {
    const quint8 low = At(window, i);
    const quint8 high = At(window, i + 1);
    ascii += high == 0 && low > 0 && low < 0x80;
    kana += high == 0x30 && low >= 0x40;
  }
  return ascii > 0 ? 3 * (ascii + kana) : 0;
}

int ScoreUtf8(QByteArrayView bytes) {
  const QByteArrayView scanned = Beginning(bytes, kScanned);
  if (scanned.startsWith("\xEF\xBB\xBF")) return kCertain;
  const Tally tally = Charsets::TallyUtf8(scanned);
  return Score(tally, Fits(tally) && Charsets::TallyShiftJis(scanned).faults > 0 &&
                          Charsets::TallyEuc(scanned).faults > 0);
}

// Certain when every shifted run is sound and kana come out of them: identifiers between "+" and
// "-" in scripts decode to rare characters, hardly to kana.
int ScoreUtf7(QByteArrayView bytes) {
  const Tally tally = Charsets::TallyUtf7(Beginning(bytes, kScanned));
  return Score(tally, tally.faults == 0 && tally.sequences >= 2);
}

int ScoreShiftJis(QByteArrayView bytes) {
  const QByteArrayView window = Beginning(bytes, kWindow);
  const Tally tally = Charsets::TallyShiftJis(window);
  const bool certain = Fits(tally) && Charsets::TallyEuc(window).faults > 0 &&
                       Charsets::TallyUtf8(window).faults > 0;
  return certain ? kCertain : static_cast<int>(tally.points);  // faults earn nothing, cost nothing
}

int ScoreEuc(QByteArrayView bytes) {
  const QByteArrayView scanned = Beginning(bytes, kScanned);
  const Tally tally = Charsets::TallyEuc(scanned);
  return Score(tally, Fits(tally) && Charsets::TallyShiftJis(scanned).faults > 0 &&
                          Charsets::TallyUtf8(scanned).faults > 0);
}

QString Judge(QByteArrayView bytes) {
  const int jis = ScoreJis(bytes);
  if (jis >= kCertain) return u"JIS"_s;
  const int unicode = ScoreUnicode(bytes);
  if (unicode >= kCertain) return u"UNICODE"_s;
  const int utf8 = ScoreUtf8(bytes);
  if (utf8 >= kCertain) return u"UTF8"_s;
  const int utf7 = ScoreUtf7(bytes);
  if (utf7 >= kCertain) return u"UTF7"_s;
  const int shiftJis = ScoreShiftJis(bytes);
  if (shiftJis >= kCertain) return u"SJIS"_s;
  const int euc = ScoreEuc(bytes);
  if (euc >= kCertain) return u"EUC"_s;
  // The first of equals wins, so this order is the order of ties.
  using Entry = std::pair<int, const char*>;
  const std::array<Entry, 6> entries{
      Entry{shiftJis, "SHIFT_JIS"}, Entry{unicode, "UNICODE"}, Entry{jis, "JIS"},
      Entry{utf7, "UTF7"},          Entry{utf8, "UTF8"},       Entry{euc, "EUC"}};
  return QString::fromLatin1(std::ranges::max_element(entries, {}, &Entry::first)->second);
}

QString DeclaredCharset(QByteArrayView bytes) {
  constexpr QByteArrayView kCharset("charset");
  for (qsizetype meta = Find(bytes, kMeta, 0); meta >= 0;) {
    const qsizetype end = FindAnyOf(bytes, "<>", meta + 1);
    const QByteArrayView tag = bytes.sliced(meta, end - meta);
    for (qsizetype word = Find(tag, kCharset, 0); word >= 0; word = Find(tag, kCharset, word + 1)) {
      qsizetype at = word + kCharset.size();
      const auto skipBlanks = [&] {
        while (at < tag.size() && static_cast<quint8>(tag[at]) <= ' ') ++at;
      };
      skipBlanks();
      if (at >= tag.size() || tag[at] != '=') continue;
      ++at;
      skipBlanks();
      const QString name = NameAt(tag, at);
      if (!name.isEmpty()) return name;
    }
    meta = Find(bytes, kMeta, end);
  }
  return {};
}

QString CharsetOfPage(QByteArrayView bytes) {
  const QString declared = NameByExpression(bytes);
  return (declared.isEmpty() ? Judge(bytes) : declared).toUpper();
}

}  // namespace zentorin::modJUDG
