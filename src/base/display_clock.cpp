// SPDX-License-Identifier: MIT
#include "base/display_clock.h"

#include "base/clock.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kSecondsPerHour = 3600;

}  // namespace

DisplayClock::DisplayClock(const Clock& clock, const ClockOptions& options)
    : clock_(clock), options_(options) {}

QDateTime DisplayClock::Now() const {
  QDateTime now = clock_.LocalNow();
  const QTime time = now.time();
  now.setTime(QTime(time.hour(), time.minute(), time.second()));
  return options_.useGmt ? now.addSecs(-options_.gmtDiffHours * kSecondsPerHour) : now;
}

QDateTime DisplayClock::Shown(const QDateTime& gmt) const {
  return options_.useGmt ? gmt : gmt.addSecs(options_.gmtDiffHours * kSecondsPerHour);
}

QString DisplayClock::TextOf(const QDateTime& time) {
  return time.toString(u"yyyy/MM/dd hh:mm:ss"_s);
}

QString DisplayClock::Label() const {
  return options_.useGmt ? u"GMT"_s : u"LocalTime"_s;
}

QString DisplayClock::LabelHint() const {
  return options_.useGmt ? u"グリニッジ標準時"_s : u"地域標準時"_s;
}

}  // namespace zentorin
