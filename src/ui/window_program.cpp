// SPDX-License-Identifier: MIT
#include "ui/window_program.h"

#include "app/auto_run.h"
#include "app/closing.h"
#include "app/command_line.h"
#include "app/start_up.h"
#include "app/workspace.h"
#include "download/run_outcome.h"
#include "ui/frm_main.h"

namespace zentorin {

WindowProgram::WindowProgram(Workspace& workspace, AutoRun& autoRun, frmMain& window)
    : workspace_(workspace), autoRun_(autoRun), window_(window) {
  connect(&autoRun, &AutoRun::Finished, this, &WindowProgram::TakeOutcome);
  connect(&autoRun, &AutoRun::Finished, this, [this] {
    locks_ = true;
    LockOpenList();
  });
  connect(&workspace.urlList, &UrlList::CurrentListFileChanged, this, &WindowProgram::LockOpenList);
  connect(&lock_, &WindowLock::RaiseRequested, this, [this](const QByteArray& token) {
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
    window_.ComeForward();
  });
  connect(&window, &frmMain::KeptOpen, this, [this] { exitStatus_ = kExitDone; });
  connect(&window, &frmMain::Closed, this, [this] { Q_EMIT Ended(exitStatus_); });
}

QCoro::Task<void> WindowProgram::Run(QStringList arguments) {
  const CommandLine line = ReadArguments(arguments, workspace_.drives);
  const bool elsewhere = co_await IsOpenElsewhere(line);
  if (elsewhere) {
    Q_EMIT Ended(kExitDone);
    co_return;
  }
  // A window that is to wait in the notification area is not shown before.
  const bool toTray = line.autoMode && line.trayMode;
  const auto layOut = [this, toTray] {
    window_.PlaceBySettings();
    if (!toTray) window_.show();
  };
  locks_ = !line.autoMode;
  const bool started = co_await StartUp(workspace_, autoRun_, line, layOut);
  // After a fault the window stays open with what has been loaded so far.
  if (started) window_.FinishStartUp(line.debugMode);
  if (started) co_return;
  locks_ = true;
  LockOpenList();
  if (!window_.isVisible()) window_.show();
}

void WindowProgram::LockOpenList() {
  if (locks_) lock_.Acquire(workspace_.urlList.CurrentListFile());
}

QCoro::Task<bool> WindowProgram::IsOpenElsewhere(const CommandLine& line) {
  if (line.autoMode || line.files.isEmpty()) co_return false;
  const QString path = FindListFile(line.files.last(), workspace_.drives);
  if (lock_.Acquire(path)) co_return false;
  const bool raised = co_await lock_.RaiseHolder(path);
  co_return raised;
}

void WindowProgram::Stop() {
  exitStatus_ = kExitCancelled;
  CancelWork(workspace_, autoRun_);
  window_.close();
}

// The window's own commands are judged by the person before it; an unattended run tells its
// outcome.
void WindowProgram::TakeOutcome(const RunOutcome& outcome) {
  if (exitStatus_ != kExitCancelled) exitStatus_ = ExitStatusOf(outcome);
}

}  // namespace zentorin
