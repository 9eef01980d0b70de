// SPDX-License-Identifier: MIT
#include "net/charset_tally.h"

#include <algorithm>
#include <vector>

namespace zentorin::Charsets {
namespace {

constexpr bool In(int value, int first, int last) {
  return value >= first && value <= last;
}

int At(QByteArrayView bytes, qsizetype i) {
  return i < bytes.size() ? static_cast<quint8>(bytes[i]) : -1;
}

// One character of an encoding: its length, 0 for a fault, and its points.
struct Step {
  qsizetype length = 0;
  int points = 0;
};

Step MakeStep(qsizetype length, int points) {
  return Step{.length = length, .points = points};
}

// Walks over `bytes` with `stepAt`, which is asked only at bytes above ASCII. Lengths beyond the
// end mean a character cut off.
template <typename StepAt>
Tally Walk(QByteArrayView bytes, StepAt stepAt) {
  Tally tally;
  for (qsizetype i = 0; i < bytes.size();) {
    if (At(bytes, i) < 0x80) {
      tally.points += i < kSingleByteWindow;
      ++i;
      continue;
    }
    const Step step = stepAt(i);
    if (i + step.length > bytes.size()) break;
    tally.faults += step.length == 0;
    tally.sequences += step.length > 1;
    tally.points += step.points;
    i += step.length == 0 ? 1 : step.length;
  }
  return tally;
}

// More than the points of a Shift_JIS pair or two half-width katakana, which the same bytes may
// be: 3, 4 and 6 for two, three and four bytes. Over-long forms and surrogates are faults.
Step Utf8Step(QByteArrayView bytes, qsizetype i) {
  struct Form {
    int firstLead, lastLead;
    int low, high;  // of the second byte
    int length, points;
  };
  using Forms = std::vector<Form>;
  static const Forms forms{{0xC2, 0xDF, 0x80, 0xBF, 2, 3}, {0xE0, 0xE0, 0xA0, 0xBF, 3, 4},
                           {0xE1, 0xEC, 0x80, 0xBF, 3, 4}, {0xED, 0xED, 0x80, 0x9F, 3, 4},
                           {0xEE, 0xEF, 0x80, 0xBF, 3, 4}, {0xF0, 0xF0, 0x90, 0xBF, 4, 6},
                           {0xF1, 0xF3, 0x80, 0xBF, 4, 6}, {0xF4, 0xF4, 0x80, 0x8F, 4, 6}};
  const int lead = At(bytes, i);
  const auto form = std::ranges::find_if(
      forms, [lead](const Form& f) { return In(lead, f.firstLead, f.lastLead); });
  if (form == forms.end()) return {};
  for (int k = 1; k < form->length && i + k < bytes.size(); ++k) {
    const int low = k == 1 ? form->low : 0x80;
    const int high = k == 1 ? form->high : 0xBF;
    if (!In(At(bytes, i + k), low, high)) return {};
  }
  return MakeStep(form->length, form->points);
}

// A point for a half-width katakana, two for a pair.
Step ShiftJisStep(QByteArrayView bytes, qsizetype i) {
  const int lead = At(bytes, i);
  if (In(lead, 161, 223)) return MakeStep(1, i < kSingleByteWindow ? 1 : 0);
  if (!In(lead, 129, 159) && !In(lead, 224, 239)) return {};
  if (i + 1 == bytes.size()) return MakeStep(2, 0);
  const int trail = At(bytes, i + 1);
  return In(trail, 0x40, 0xFC) && trail != 0x7F ? MakeStep(2, 2) : Step{};
}

// Four points for kana, the commonest of Japanese text; two for a kanji whose bytes may both be
// half-width katakana of Shift_JIS, so that these tie; three for all else.
Step EucStep(QByteArrayView bytes, qsizetype i) {
  const int lead = At(bytes, i);
  const qsizetype length = lead == 0x8F ? 3 : 2;
  if (lead != 0x8E && lead != 0x8F && !In(lead, 0xA1, 0xFE)) return {};
  for (qsizetype k = 1; k < length && i + k < bytes.size(); ++k) {
    if (!In(At(bytes, i + k), 0xA1, lead == 0x8E ? 0xDF : 0xFE)) return {};
  }
  if (lead == 0xA4 || lead == 0xA5) return MakeStep(length, 4);
  return MakeStep(length, In(lead, 0xB0, 0xDF) && At(bytes, i + 1) <= 0xDF ? 2 : 3);
}

int Base64Value(int c) {
  if (In(c, 'A', 'Z')) return c - 'A';
  if (In(c, 'a', 'z')) return c - 'a' + 26;
  if (In(c, '0', '9')) return c - '0' + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : -1;
}

// One shifted run of UTF-7, from behind its "+". Its characters are a point each.
struct Base64Run {
  qsizetype end = 0;
  qint64 units = 0;
  qint64 kana = 0;
  bool sound = false;
};

Base64Run ReadRun(QByteArrayView bytes, qsizetype start) {
  Base64Run run{.end = start};
  quint32 bits = 0;
  int count = 0;
  bool noControls = true;
  for (int value = Base64Value(At(bytes, run.end)); value >= 0;
       value = Base64Value(At(bytes, ++run.end))) {
    bits = bits << 6U | static_cast<quint32>(value);
    count += 6;
    if (count < 16) continue;
    count -= 16;
    const auto unit = static_cast<int>(bits >> static_cast<quint32>(count));
    bits &= (1U << static_cast<quint32>(count)) - 1;
    ++run.units;
    run.kana += In(unit, 0x3040, 0x30FF);
    noControls = noControls && unit >= 0x20;
  }
  // What is left over is padding: fewer than six bits, all zero.
  run.sound = run.units > 0 && noControls && count < 6 && bits == 0;
  return run;
}

}  // namespace

Tally TallyUtf8(QByteArrayView bytes) {
  return Walk(bytes, [&](qsizetype i) { return Utf8Step(bytes, i); });
}

Tally TallyShiftJis(QByteArrayView bytes) {
  return Walk(bytes, [&](qsizetype i) { return ShiftJisStep(bytes, i); });
}

Tally TallyEuc(QByteArrayView bytes) {
  return Walk(bytes, [&](qsizetype i) { return EucStep(bytes, i); });
}

// ESC $ @, ESC $ B, ESC $ ( D and ESC ( I select Japanese sets; ESC ( B and ESC ( J end them.
Tally TallyJis(QByteArrayView bytes) {
  Tally tally;
  bool japanese = false;
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const int byte = At(bytes, i);
    tally.faults += byte >= 0x80;
    tally.sequences += japanese && In(byte, 0x21, 0x7E);
    if (byte != 0x1B) continue;
    const QByteArrayView rest = bytes.sliced(i + 1);
    const bool begins = rest.startsWith("$@") || rest.startsWith("$B") || rest.startsWith("$(D") ||
                        rest.startsWith("(I");
    const bool ends = rest.startsWith("(B") || rest.startsWith("(J");
    if (!begins && !ends) continue;
    japanese = begins;
    tally.points += 10;
    i += rest.startsWith("$(D") ? 3 : 2;
  }
  return tally;
}

Tally TallyUtf7(QByteArrayView bytes) {
  Tally tally;
  for (qsizetype i = 0; i < bytes.size(); ++i) {
    const int byte = At(bytes, i);
    tally.faults += byte >= 0x80;
    if (byte != '+') {
      tally.points += byte < 0x80 && i < kSingleByteWindow;
      continue;
    }
    if (At(bytes, i + 1) == '-') continue;
    const Base64Run run = ReadRun(bytes, i + 1);
    if (run.sound) tally.sequences += run.kana;
    if (run.end >= bytes.size()) break;  // perhaps cut off
    tally.faults += !run.sound;
    i = run.end - (At(bytes, run.end) == '-' ? 0 : 1);
  }
  return tally;
}

// A pair reads as ASCII of the other order when it is a Japanese blank or the kanji for one. Pairs
// of zeros alone are padding, or UTF-32.
ByteOrder OrderOfUtf16(QByteArrayView bytes) {
  constexpr qsizetype kFewest = 4;
  constexpr qsizetype kOneIn = 32;
  qsizetype little = 0;
  qsizetype big = 0;
  qsizetype zero = 0;
  for (qsizetype i = 0; i + 1 < bytes.size(); i += 2) {
    const int first = At(bytes, i);
    const int second = At(bytes, i + 1);
    little += second == 0 && In(first, '\t', 0x7E);
    big += first == 0 && In(second, '\t', 0x7E);
    zero += first == 0 && second == 0;
  }
  const qsizetype most = std::max(little, big);
  const bool evident = most >= kFewest && kOneIn * most >= bytes.size() / 2 &&
                       2 * (std::min(little, big) + zero) <= most;
  if (!evident) return ByteOrder::None;
  return little > big ? ByteOrder::Little : ByteOrder::Big;
}

}  // namespace zentorin::Charsets
