// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QTime>
#include <optional>

namespace zentorin {

// Readers of date texts. Results are wall times held with Qt::UTC.

// An HTTP date in any of its three forms, in GMT.
std::optional<QDateTime> ParseHttpDate(const QString& text);

// A date, a time or both, as the file list and the command line write them: "2024/05/01",
// "2024-05-01 23:30", "23:30:05", "7:5". Without a date the day is 1899/12/30.
std::optional<QDateTime> ParseDateText(const QString& text);

}  // namespace zentorin
