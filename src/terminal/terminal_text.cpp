// SPDX-License-Identifier: MIT
#include "terminal/terminal_text.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <utility>

namespace zentorin {
namespace {

using Range = std::pair<char32_t, char32_t>;  // first and last character

// East Asian Width W and F, neighbouring blocks merged.
constexpr std::array<Range, 17> kWide = {{{0x1100, 0x115F},
                                          {0x231A, 0x231B},
                                          {0x2E80, 0x303E},
                                          {0x3041, 0x33FF},
                                          {0x3400, 0x4DBF},
                                          {0x4E00, 0xA4CF},
                                          {0xA960, 0xA97F},
                                          {0xAC00, 0xD7A3},
                                          {0xF900, 0xFAFF},
                                          {0xFE10, 0xFE19},
                                          {0xFE30, 0xFE6F},
                                          {0xFF01, 0xFF60},
                                          {0xFFE0, 0xFFE6},
                                          {0x16FE0, 0x18CFF},
                                          {0x1AFF0, 0x1B2FF},
                                          {0x1F300, 0x1FAFF},
                                          {0x20000, 0x3FFFD}}};

int WidthOf(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
    case QChar::Other_Control:
      return 0;
    default:
      break;
  }
  const auto* const range = std::ranges::lower_bound(kWide, character, {}, &Range::second);
  return range != kWide.end() && range->first <= character ? 2 : 1;
}

}  // namespace

int TerminalWidth(const QString& text) {
  int width = 0;
  for (const char32_t character : text.toStdU32String()) width += WidthOf(character);
  return width;
}

QString CutToWidth(const QString& text, int columns) {
  int width = 0;
  qsizetype end = 0;
  for (const char32_t character : text.toStdU32String()) {
    width += WidthOf(character);
    if (width > columns) break;
    end += QChar::requiresSurrogates(character) ? 2 : 1;
  }
  return text.left(end);
}

}  // namespace zentorin
