// SPDX-License-Identifier: MIT
#include "ui/widgets/readable_colour.h"

#include <QPalette>
#include <algorithm>

namespace zentorin {

QColor ReadableColour(const QColor& colour, const QPalette& palette) {
  constexpr int kHalfLight = 128;
  constexpr int kLeastLight = 190;
  if (palette.color(QPalette::Window).lightness() >= kHalfLight) return colour;
  return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(),
                         std::max(colour.lightness(), kLeastLight));
}

}  // namespace zentorin
