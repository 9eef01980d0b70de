// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QWidget;

namespace zentorin {

struct AppSettings;

// Where the settings want the window. A rectangle whose upper edge no screen shows, so that nobody
// could take hold of it, is moved onto the nearest screen and cut to its size; one without a size
// gets the first one of all. The first rectangle, which nobody chose, grows to `roomy`, at which
// every caption is whole in the font at hand, as far as its screen goes.
QRect PlaceFromSettings(const AppSettings& settings, QSize roomy);

// Keeps the window's restored rectangle, also while it is maximised or minimised.
void RememberPlace(const QWidget& window, AppSettings& settings);

}  // namespace zentorin
