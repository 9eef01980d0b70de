// SPDX-License-Identifier: MIT
#pragma once

#include <QCoro/QCoroTask>

namespace zentorin {

class AutoRun;
class Workspace;
struct CommandLine;

// Everything between the program's start and its readiness that needs no window, in order: the
// settings, the pattern lists, the lists that the command line names, and arming the unattended
// run. `layOut` is called between the second and the third: a window places itself and fills its
// pattern boxes there. A failure is told in a message box and ends start-up where it happened;
// false then. All references outlive the task.
QCoro::Task<bool> StartUp(Workspace& workspace, AutoRun& autoRun, const CommandLine& line,
                          std::function<void()> layOut = {});

}  // namespace zentorin
