// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <chrono>

namespace zentorin {

// Takes displays that nobody serves out of the environment, lest Qt abort or a started program turn
// to them, and answers their names. Belongs before the application object.
QStringList DropDeadDisplays(std::chrono::milliseconds bound = std::chrono::seconds(5));

// A platform that QT_QPA_PLATFORM names counts as one, unless it needs a display of its own.
bool HasDisplay();

}  // namespace zentorin
