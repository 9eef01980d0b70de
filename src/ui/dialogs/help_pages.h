// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The pages of the user's help that the program opens.
enum class HelpPage { Contents, Patterns, History };

// File name of a page in the help's folder.
QString HelpFileName(HelpPage page);

// The folder of the help: installed beside the program, else the one of the source tree that the
// program was built from. Empty when there is neither.
QString FindHelpFolder();

}  // namespace zentorin
