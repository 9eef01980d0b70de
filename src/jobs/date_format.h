// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

// The .cpp lists the tokens; an empty format means "c". An invalid date gives an empty text.
QString FormatDate(const QDateTime& date, const QString& format);

// One token at least, and nothing but separators between: no other letter and no digit.
bool IsPlainDateFormat(const QString& format);

}  // namespace zentorin
