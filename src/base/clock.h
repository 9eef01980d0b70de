// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace zentorin {

// Date-times are wall times without a zone, held with Qt::UTC so that arithmetic on them never
// meets a daylight-saving gap.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  virtual QDateTime LocalNow() const = 0;  // to the millisecond
};

class SystemClock : public Clock {
 public:
  QDateTime LocalNow() const override;
};

}  // namespace zentorin
