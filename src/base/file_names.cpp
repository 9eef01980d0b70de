// SPDX-License-Identifier: MIT
#include "base/file_names.h"

namespace zentorin {
namespace {

bool IsBetween(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

// Characters that act on a terminal or a list instead of showing: control characters, line and
// paragraph separators, and the marks that turn the direction of writing.
bool IsHarmfulToShow(char16_t unit) {
  return unit < 0x20 || IsBetween(unit, 0x7F, 0x9F) || unit == 0x061C ||
         IsBetween(unit, 0x200E, 0x200F) || IsBetween(unit, 0x2028, 0x202E) ||
         IsBetween(unit, 0x2066, 0x2069);
}

}  // namespace

QString EscapeForDisplay(const QString& text) {
  QString shown;
  shown.reserve(text.size());
  for (const QChar c : text) {
    if (IsHarmfulToShow(c.unicode()))
      shown += QStringLiteral("\\u{%1}").arg(c.unicode(), 0, 16);
    else
      shown += c;
  }
  return shown;
}

}  // namespace zentorin
