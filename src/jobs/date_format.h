// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

// The .cpp lists the tokens; an empty format means "c". An invalid date gives an empty text.
QString FormatDate(const QDateTime& date, const QString& format);

}  // namespace zentorin
