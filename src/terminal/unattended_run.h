// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <QCoro/QCoroTask>

#include "app/auto_run.h"
#include "app/exit_status.h"
#include "terminal/terminal_progress.h"

namespace zentorin {

struct CommandLine;
class Terminal;
class Workspace;

// One run of the program without a window: starts up, waits for the start time, runs the batch and
// the step after it, closes and ends with an exit status. Workspace and terminal outlive it.
class UnattendedRun : public QObject {
  Q_OBJECT

 public:
  UnattendedRun(Workspace& workspace, Terminal& terminal, QObject* parent = nullptr);

  // Emits Ended() with the exit status when all has come to rest, never before it returns to the
  // event loop. `line` outlives the task.
  QCoro::Task<void> Run(const CommandLine& line);

  // The user's wish to stop: what runs is cancelled, written down and ends with status 130.
  void Stop();

 Q_SIGNALS:
  void Ended(int status);

 private:
  QCoro::Task<ExitStatus> RunToEnd(const CommandLine& line);
  ExitStatus Outcome(bool ran) const;

  Workspace& workspace_;
  Terminal& terminal_;
  AutoRun autoRun_;
  TerminalProgress progress_;
  bool stopped_ = false;
};

}  // namespace zentorin
