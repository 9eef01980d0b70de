// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// $ZENTORIN_HOME, else the executable's folder when it holds Conf.txt or a file named "portable",
// else $XDG_DATA_HOME/zentorin. Made when missing; empty when it cannot be made.
QString FindProgramFolder(const QString& executableFolder);

}  // namespace zentorin
