// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QPalette;

namespace zentorin {

// A pure colour such as blue or red as it can be read on the palette's window colour: itself on a
// light one, a lighter shade of it on a dark one.
QColor ReadableColour(const QColor& colour, const QPalette& palette);

}  // namespace zentorin
