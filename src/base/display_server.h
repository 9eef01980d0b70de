// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <chrono>

namespace zentorin {

// Takes displays that the environment names and nobody serves out of it, so that neither Qt, which
// would abort, nor a program that is started turns to them. Answers their names. A display server
// that does not greet back within `bound` counts as gone. Belongs before the application object.
QStringList DropDeadDisplays(std::chrono::milliseconds bound = std::chrono::seconds(5));

// Whether the environment offers a display to draw on. A platform that QT_QPA_PLATFORM names on
// purpose counts as one, unless it needs a display of its own.
bool HasDisplay();

}  // namespace zentorin
