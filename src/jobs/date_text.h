// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QTime>
#include <optional>

namespace zentorin {

// An HTTP date in any of its three forms. Both results are wall times held with Qt::UTC.
std::optional<QDateTime> ParseHttpDate(const QString& text);

// "2024/05/01", "2024-05-01 23:30", "7:5". Without a date the day is 1899/12/30.
std::optional<QDateTime> ParseDateText(const QString& text);

}  // namespace zentorin
