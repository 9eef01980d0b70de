// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace zentorin {

// The date formatter of templates, prefixes and labels. `date` is a wall time; its zone is ignored.
// The full token set is documented in the .cpp beside its table. An empty format gives the
// formatter's default text, "yyyy/mm/dd hh:nn:ss" without the time when it is midnight. An invalid
// date gives an empty text.
QString FormatDate(const QDateTime& date, const QString& format);

}  // namespace zentorin
