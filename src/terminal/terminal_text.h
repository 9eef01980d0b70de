// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Columns that a text takes on a terminal: two for East Asian wide characters, none for marks that
// combine with the character before.
int TerminalWidth(const QString& text);

// The text's beginning that fits into `columns`, whole characters only.
QString CutToWidth(const QString& text, int columns);

}  // namespace zentorin
