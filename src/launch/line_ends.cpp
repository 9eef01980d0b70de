// SPDX-License-Identifier: MIT
#include "launch/line_ends.h"

namespace zentorin {

QString WithWholeLineEnds(const QString& text) {
  QString whole;
  whole.reserve(text.size() + text.size() / 16);
  QChar before;
  for (const QChar c : text) {
    if (c == u'\n' && before != u'\r') whole += u'\r';
    whole += c;
    before = c;
  }
  return whole;
}

}  // namespace zentorin
