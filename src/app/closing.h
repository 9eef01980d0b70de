// SPDX-License-Identifier: MIT
#pragma once

#include <QCoro/QCoroTask>

#include "base/text_file.h"

namespace zentorin {

class AutoRun;
class Workspace;

// Ends whatever works and keeps what outlives the program, in order: a cancel, the wait until all
// work has come to rest, the close request to an external recording tool, the settings. Answers
// what came of writing the settings, which never keeps the program from ending. Nothing may be
// destroyed before the task has finished. All references outlive it.
QCoro::Task<FileOutcome> CloseSteps(Workspace& workspace, AutoRun& autoRun);

}  // namespace zentorin
