// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QPalette;

namespace zentorin {

// A pure colour, or a lighter shade of it on a dark palette.
QColor ReadableColour(const QColor& colour, const QPalette& palette);

}  // namespace zentorin
