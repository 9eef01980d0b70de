// SPDX-License-Identifier: MIT
#pragma once

#include <QCoro/QCoroTask>

#include "base/outcome.h"

namespace zentorin {

class AutoRun;
class Workspace;

// Ends what works, or else gives up an armed start time.
void CancelWork(Workspace& workspace, AutoRun& autoRun);

// In order: cancels, waits until all work has come to rest, asks a recording tool to close, writes
// the settings and the choices. Answers what came of the last, which never keeps the program from
// ending. Nothing may be destroyed before the task has finished.
QCoro::Task<Outcome> CloseSteps(Workspace& workspace, AutoRun& autoRun);

}  // namespace zentorin
