// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include "jobs/target_url_item.h"

namespace zentorin {

enum class TemplateKind {
  Any,    // every "{…}" that holds no brace
  Plain,  // of these the ones that IsPlainDateFormat() accepts; the others stay
};

// Replaces each template by the date in its format.
QString ExpandDateTemplates(const QString& text, const QDateTime& date,
                            TemplateKind kind = TemplateKind::Any);

// The job's root URL. Without a file-name format or a day window only plain templates are meant: an
// address may hold braces of its own.
QString ExpandedRoot(const TargetUrlItem& job, const QDateTime& date);

struct DayWindow {
  int first = 0;  // days from the newest day to today
  int last = 0;   // days from the oldest day to today
};

// In either order; an empty `second` means the same as `first`. Days are cut to 36,500.
DayWindow ParseDayWindow(const QString& first, const QString& second);

// "yyyy/mm/dd～yyyy/mm/dd", the newer day first.
QString DayWindowText(const DayWindow& window, const QDate& today);

}  // namespace zentorin
