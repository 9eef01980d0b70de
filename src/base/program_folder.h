// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The folder that holds Conf.txt, reglist.txt, log.txt and drives/: $ZENTORIN_HOME when set, else
// the executable's folder when it holds Conf.txt or a file named "portable", else
// $XDG_DATA_HOME/zentorin. The folder is created when missing; the result is absolute, or empty
// when it cannot be made.
QString FindProgramFolder(const QString& executableFolder);

}  // namespace zentorin
