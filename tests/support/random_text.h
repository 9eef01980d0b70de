// SPDX-License-Identifier: MIT
#pragma once

#include <QRandomGenerator>
#include <QStringList>

namespace zentorin::test {

// Up to `most` of the parts in a row. A generator with a seed gives the same texts in every run.
inline QString RandomText(QRandomGenerator& random, const QStringList& parts, quint32 most) {
  QString text;
  for (quint32 left = random.bounded(most + 1); left > 0; --left) {
    text += parts[random.bounded(static_cast<int>(parts.size()))];
  }
  return text;
}

}  // namespace zentorin::test
