// SPDX-License-Identifier: MIT
#include "terminal/unattended_run.h"

#include <QCoro/QCoroSignal>

#include "app/closing.h"
#include "app/command_line.h"
#include "app/program_title.h"
#include "app/start_up.h"
#include "app/usage.h"
#include "app/workspace.h"
#include "base/wait.h"
#include "terminal/terminal.h"

namespace zentorin {

UnattendedRun::UnattendedRun(Workspace& workspace, Terminal& terminal, QObject* parent)
    : QObject(parent),
      workspace_(workspace),
      terminal_(terminal),
      autoRun_(workspace),
      progress_(workspace, autoRun_, terminal) {}

QCoro::Task<void> UnattendedRun::Run(const CommandLine& line) {
  const ExitStatus status = co_await RunToEnd(line);
  co_await YieldToEventLoop();
  Q_EMIT Ended(status);
}

QCoro::Task<ExitStatus> UnattendedRun::RunToEnd(const CommandLine& line) {
  const bool started = co_await StartUp(workspace_, autoRun_, line);
  if (!started) co_return kExitRefused;
  if (!line.autoMode) {
    terminal_.Line(HowToRunUnattended());
    co_return kExitRefused;
  }
  terminal_.Line(ProgramTitle(workspace_.urlList.CurrentListFile()));
  const RunOutcome outcome = co_await qCoro(&autoRun_, &AutoRun::Finished);
  const Outcome written = co_await CloseSteps(workspace_, autoRun_);
  if (!written.Ok()) terminal_.Line(written.message);
  progress_.Close(outcome);
  co_return ExitStatusOf(outcome);
}

void UnattendedRun::Stop() {
  CancelWork(workspace_, autoRun_);
}

}  // namespace zentorin
