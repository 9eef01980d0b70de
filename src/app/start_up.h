// SPDX-License-Identifier: MIT
#pragma once

#include <QCoro/QCoroTask>

namespace zentorin {

class AutoRun;
class Workspace;
struct CommandLine;

// In order: the settings, the choices, the pattern lists, `layOut`, the lists that the command line
// names, arming the unattended run. In `layOut` a window places itself and fills its pattern boxes.
// A failure is told in a message box and ends start-up where it happened; false then.
QCoro::Task<bool> StartUp(Workspace& workspace, AutoRun& autoRun, const CommandLine& line,
                          std::function<void()> layOut = {});

}  // namespace zentorin
