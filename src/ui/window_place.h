// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QWidget;

namespace zentorin {

struct AppSettings;

// A rectangle that nobody could take hold of is moved onto the nearest screen; without a size it is
// the first one of all, which grows to `roomy` as far as its screen goes.
QRect PlaceFromSettings(const AppSettings& settings, QSize roomy);

// The restored rectangle, also while the window is maximised or minimised.
void RememberPlace(const QWidget& window, AppSettings& settings);

}  // namespace zentorin
