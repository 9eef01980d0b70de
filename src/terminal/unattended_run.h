// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <QCoro/QCoroTask>

#include "app/auto_run.h"
#include "download/run_outcome.h"
#include "terminal/terminal_progress.h"

namespace zentorin {

struct CommandLine;
class Terminal;
class Workspace;

// One run of the program without a window, from start-up to its exit status.
class UnattendedRun : public QObject {
  Q_OBJECT

 public:
  UnattendedRun(Workspace& workspace, Terminal& terminal, QObject* parent = nullptr);

  // Emits Ended() when all has come to rest, never before it returns to the event loop.
  QCoro::Task<void> Run(const CommandLine& line);

  void Stop();  // what runs is cancelled and ends with status 130

 Q_SIGNALS:
  void Ended(int status);

 private:
  QCoro::Task<ExitStatus> RunToEnd(const CommandLine& line);

  Workspace& workspace_;
  Terminal& terminal_;
  AutoRun autoRun_;
  TerminalProgress progress_;
};

}  // namespace zentorin
