// SPDX-License-Identifier: MIT
#include "ui/window_program.h"

#include "app/auto_run.h"
#include "app/command_line.h"
#include "app/exit_status.h"
#include "app/start_up.h"
#include "app/workspace.h"
#include "ui/frm_main.h"

namespace zentorin {

WindowProgram::WindowProgram(Workspace& workspace, AutoRun& autoRun, frmMain& window)
    : workspace_(workspace), autoRun_(autoRun), window_(window) {
  connect(&autoRun, &AutoRun::Finished, this, &WindowProgram::TakeOutcome);
  connect(&window, &frmMain::Closed, this, [this] { Q_EMIT Ended(exitStatus_); });
}

QCoro::Task<void> WindowProgram::Run(QStringList arguments) {
  const CommandLine line = ReadArguments(arguments, workspace_.drives);
  const auto layOut = [this] {
    window_.PlaceBySettings();
    window_.show();
  };
  const bool started = co_await StartUp(workspace_, autoRun_, line, layOut);
  // After a fault the window stays open with what has been loaded so far.
  if (started) window_.FinishStartUp(line.debugMode);
  if (!started && !window_.isVisible()) window_.show();
}

void WindowProgram::Stop() {
  exitStatus_ = kExitCancelled;
  workspace_.driver.CancelCommand();
  window_.close();
}

// The window's own commands are judged by the person before it; an unattended run tells its
// outcome.
void WindowProgram::TakeOutcome(bool ran) {
  if (exitStatus_ == kExitCancelled) return;
  if (!ran || workspace_.driver.WasCancelled()) {
    exitStatus_ = kExitCancelled;
  } else {
    exitStatus_ = workspace_.driver.AnyFailure() ? kExitFailures : kExitDone;
  }
}

}  // namespace zentorin
