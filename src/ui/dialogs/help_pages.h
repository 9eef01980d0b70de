// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

enum class HelpPage { Contents, Patterns, History };

QString HelpFileName(HelpPage page);

// Installed beside the program, else in the source tree it was built from; else empty.
QString FindHelpFolder();

}  // namespace zentorin
