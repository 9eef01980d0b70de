// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Columns on a terminal: two for East Asian wide characters, none for combining marks.
int TerminalWidth(const QString& text);

QString CutToWidth(const QString& text, int columns);  // whole characters only

}  // namespace zentorin
