// SPDX-License-Identifier: MIT
#include "app/auto_run.h"

#include "app/command_line.h"
#include "app/program_title.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "base/message_boxes.h"
#include "jobs/date_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kSecondsPerHour = 3600;

int SecondOfDay(const QTime& time) {
  return QTime(0, 0).secsTo(QTime(time.hour(), time.minute(), time.second()));
}

QString CountdownText(int seconds) {
  const QString format = seconds >= kSecondsPerHour ? u"hh:mm:ss"_s : u"mm:ss"_s;
  return QTime(0, 0).addSecs(seconds).toString(format) + u" - 開始までの時間"_s;
}

}  // namespace

QString ListInUseText(const QString& listFile) {
  return u"このＵＲＬリストは、他の自動実行で使用中です。\r\n\r\n"_s + listFile;
}

AutoRun::AutoRun(Workspace& workspace, QObject* parent) : QObject(parent), workspace_(workspace) {
  timer_.setInterval(kTickMs);
  connect(&timer_, &QTimer::timeout, this, &AutoRun::Tick);
  connect(&workspace_.driver, &RunDriver::PresetsCleared, this, &AutoRun::GiveUp);
  connect(&workspace_.driver, &RunDriver::BatchEnded, this, &AutoRun::ShowBatchEnd);
}

bool AutoRun::Arm(const CommandLine& line) {
  if (!LockOpenList()) return false;
  state_ = State::Armed;
  armed_.emplace(workspace_.activity, Phase::Armed);
  autoStartTime_ = line.autoStartTime;
  trayMode_ = line.trayMode;
  remainingSeconds_ = SecondsUntilStart();
  workspace_.driver.SetAfterBatchAction(line.afterBatchAction);
  if (trayMode_) Q_EMIT MoveToTrayRequested();
  timer_.start();
  // The first tick comes as soon as start-up has returned: "at once" is not a second later.
  QMetaObject::invokeMethod(this, &AutoRun::Tick, Qt::QueuedConnection);
  return true;
}

int AutoRun::SecondsUntilStart() const {
  if (autoStartTime_.isEmpty()) return 0;
  const std::optional<QDateTime> start = ParseDateText(autoStartTime_);
  if (!start) return 0;
  return SecondOfDay(start->time()) - SecondOfDay(workspace_.world.clock.LocalNow().time());
}

void AutoRun::Tick() {
  // The first tick may be on its way yet when the countdown is given up.
  if (state_ != State::Armed) return;
  remainingSeconds_ = SecondsUntilStart();
  if (remainingSeconds_ <= 0) {
    // A command that the user has started meanwhile is let through first.
    if (!workspace_.driver.IsRunning()) RunBatch();
  } else {
    ShowText(CountdownText(remainingSeconds_));
  }
}

void AutoRun::ShowText(const QString& text) {
  Q_EMIT TitleChanged(text);
  Q_EMIT TrayTipChanged(text);
}

void AutoRun::GiveUp() {
  if (state_ != State::Armed) return;
  Reset();
  Q_EMIT TitleChanged(ProductTitle());
  RunOutcome outcome;
  outcome.cancelled = true;
  Q_EMIT Finished(outcome);
}

// False when another run holds it.
bool AutoRun::LockOpenList() {
  lock_.Release();
  const QString& list = workspace_.urlList.CurrentListFile();
  return list.isEmpty() || lock_.Acquire(list, workspace_.drives.ProgramFolder());
}

QCoro::Task<void> AutoRun::RunBatch() {
  timer_.stop();
  // No longer armed: a program that closes meanwhile waits for the answer to the box below.
  state_ = State::Running;
  RunOutcome outcome;
  // During the countdown another list may have been opened, or this one written anew.
  if (LockOpenList()) {
    ShowText(u"ダウンロード実行中"_s);
    armed_.reset();
    outcome = co_await workspace_.driver.BatchCommand();
  } else {
    outcome.refused = true;
    const MessageBox box = MessageBox::Error(ListInUseText(workspace_.urlList.CurrentListFile()));
    co_await workspace_.world.messages.Ask(box);
    Q_EMIT TitleChanged(ProductTitle());
  }
  Reset();
  Q_EMIT Finished(outcome);
}

// The step after the batch is yet to come.
void AutoRun::ShowBatchEnd() {
  if (state_ != State::Running) return;
  if (trayMode_) Q_EMIT RestoreFromTrayRequested();
  Q_EMIT TitleChanged(ProductTitle());
}

void AutoRun::Reset() {
  timer_.stop();
  armed_.reset();
  workspace_.driver.SetAfterBatchAction(QString());
  autoStartTime_.clear();
  trayMode_ = false;
  state_ = State::Idle;
  lock_.Release();
}

}  // namespace zentorin
