// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

// Replaces every "{…}" that holds no brace by the date in that format.
QString ExpandDateTemplates(const QString& text, const QDateTime& date);

struct DayWindow {
  int first = 0;  // days from the newest day to today
  int last = 0;   // days from the oldest day to today
};

// In either order; an empty `second` means the same as `first`. Days are cut to 36,500.
DayWindow ParseDayWindow(const QString& first, const QString& second);

// "yyyy/mm/dd～yyyy/mm/dd", the newer day first.
QString DayWindowText(const DayWindow& window, const QDate& today);

}  // namespace zentorin
