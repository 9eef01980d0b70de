// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

class Clock;

// Which time the clock label shows; part of the settings.
struct ClockOptions {
  bool useGmt = false;
  int gmtDiffHours = 9;  // hours by which local time is ahead of GMT

  // Hours to add to a date in GMT so that it is in the time that the label shows.
  int OffsetHours() const { return useGmt ? 0 : gmtDiffHours; }
};

// The clock label (`lblTimeLbl`, `lblTime`). Its time is the base date of the date templates and
// the reference time of a crawl. Both references must outlive it.
class DisplayClock {
 public:
  DisplayClock(const Clock& clock, const ClockOptions& options);

  // The shown wall time, whole seconds, held with Qt::UTC.
  QDateTime Now() const;
  // "yyyy/mm/dd hh:nn:ss" of Now().
  QString Text() const;
  // "GMT" or "LocalTime", and its hint.
  QString Label() const;
  QString LabelHint() const;

 private:
  const Clock& clock_;
  const ClockOptions& options_;
};

}  // namespace zentorin
