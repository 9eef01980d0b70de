// SPDX-License-Identifier: MIT
#include "app/closing.h"

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTimer>

#include "app/auto_run.h"
#include "app/workspace.h"
#include "base/wait.h"
#include "download/stream_capture.h"

namespace zentorin {
namespace {

constexpr std::chrono::milliseconds kToolWindowTime(500);

QCoro::Task<void> WaitForRest(Workspace& workspace, AutoRun& autoRun) {
  RunDriver& driver = workspace.driver;
  SourceCommand& source = workspace.source;
  while (autoRun.CurrentState() != AutoRun::State::Idle) {
    co_await qCoro(&autoRun, &AutoRun::Finished);
  }
  while (driver.IsRunning()) {
    co_await qCoro(&driver, &RunDriver::RunningChanged);
  }
  while (source.IsRunning()) {
    co_await qCoro(&source, &SourceCommand::RunningChanged);
  }
  // The signals come from within the tasks; after one turn those have returned.
  co_await YieldToEventLoop();
}

}  // namespace

void CancelWork(Workspace& workspace, AutoRun& autoRun) {
  const bool works = workspace.driver.IsRunning() || workspace.source.IsRunning();
  workspace.driver.CancelCommand();
  workspace.source.Cancel();
  if (!works) autoRun.GiveUp();
}

QCoro::Task<Outcome> CloseSteps(Workspace& workspace, AutoRun& autoRun) {
  CancelWork(workspace, autoRun);
  autoRun.GiveUp();
  co_await WaitForRest(workspace, autoRun);
  const bool asked = workspace.world.capture.AskToolToClose();
  if (asked) co_await QCoro::sleepFor(kToolWindowTime);
  Outcome settings = workspace.settings.Save(workspace.SettingsPath());
  Outcome choices = workspace.keptChoices.Save(workspace.ChoicesPath());
  if (settings.Ok()) co_return choices;
  if (!choices.Ok()) settings.message += choices.message;
  co_return settings;
}

}  // namespace zentorin
