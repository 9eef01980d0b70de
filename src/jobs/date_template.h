// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

// Replaces every "{…}" that holds no brace by the date in that format.
QString ExpandDateTemplates(const QString& text, const QDateTime& date);

// The days of a date-format job, counted back from today; first <= last.
struct DayWindow {
  int first = 0;  // days back of the newest day
  int last = 0;   // days back of the oldest day
};

// `second` may be empty and then means the same as `first`. Swapped when the wrong way round. Days
// back beyond 36,500 are cut to that.
DayWindow ParseDayWindow(const QString& first, const QString& second);

// "yyyy/mm/dd～yyyy/mm/dd", the newer day first.
QString DayWindowText(const DayWindow& window, const QDate& today);

}  // namespace zentorin
