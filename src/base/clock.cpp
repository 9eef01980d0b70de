// SPDX-License-Identifier: MIT
#include "base/clock.h"

namespace zentorin {

QDateTime SystemClock::LocalNow() const {
  const QDateTime now = QDateTime::currentDateTime();
  return {now.date(), now.time(), Qt::UTC};
}

}  // namespace zentorin
