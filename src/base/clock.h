// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace zentorin {

// Where the program gets the time from. Date-times are wall times without a zone: they are held
// with Qt::UTC so that arithmetic on them never meets a daylight-saving gap.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  // The computer's local wall time, to the millisecond.
  virtual QDateTime LocalNow() const = 0;
};

class SystemClock : public Clock {
 public:
  QDateTime LocalNow() const override;
};

}  // namespace zentorin
