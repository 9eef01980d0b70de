// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

class Clock;

struct ClockOptions {
  bool useGmt = false;
  int gmtDiffHours = 9;  // hours by which local time is ahead of GMT
};

// The clock label (`lblTimeLbl`, `lblTime`): the base date of the date templates and the reference
// time of a crawl.
class DisplayClock {
 public:
  DisplayClock(const Clock& clock, const ClockOptions& options);

  QDateTime Now() const;  // whole seconds, held with Qt::UTC
  // A date in GMT in the time that the label shows.
  QDateTime Shown(const QDateTime& gmt) const;
  QString Text() const { return TextOf(Now()); }
  static QString TextOf(const QDateTime& time);  // "yyyy/mm/dd hh:nn:ss"
  QString Label() const;                         // "GMT" or "LocalTime"
  QString LabelHint() const;

 private:
  const Clock& clock_;
  const ClockOptions& options_;
};

}  // namespace zentorin
