// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace zentorin {

// Two for a surrogate pair, else one, also for half a pair.
inline qsizetype UnitsAt(QStringView text, qsizetype at) {
  const bool pair =
      text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
  return pair ? 2 : 1;
}

}  // namespace zentorin
