// SPDX-License-Identifier: MIT
#pragma once

class QFont;

namespace zentorin {

// The fixed-pitch Gothic face of lists and edit fields, at the size of `base`.
QFont FixedPitchFont(const QFont& base);

}  // namespace zentorin
