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
  connect(&workspace_.state, &RunState::Cancelled, this, &AutoRun::TakeCancel);
  connect(&workspace_.driver, &RunDriver::PresetsCleared, this, &AutoRun::Abandon);
  // A command that ends during the countdown has hidden the button that gives the countdown up.
  connect(&workspace_.driver, &RunDriver::RunningChanged, this, [this](bool running) {
    if (!running && phase_ == Phase::Armed) OfferCancel();
  });
}

bool AutoRun::Arm(const CommandLine& line) {
  if (!LockOpenList()) return false;
  phase_ = Phase::Armed;
  autoStartTime_ = line.autoStartTime;
  trayMode_ = line.trayMode;
  remainingSeconds_ = SecondsUntilStart();
  workspace_.driver.SetAfterBatchAction(line.afterBatchAction);
  OfferCancel();
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
  // The first tick may be on its way yet when a cancel has stopped the timer.
  if (phase_ != Phase::Armed || !timer_.isActive()) return;
  remainingSeconds_ = SecondsUntilStart();
  if (remainingSeconds_ <= 0) {
    // A command that the user has started meanwhile is let through first.
    if (!workspace_.driver.IsRunning()) RunBatch();
  } else {
    ShowText(CountdownText(remainingSeconds_));
  }
}

// A cancel ends the countdown at once instead of at the next tick. Queued, so that the command that
// set the flag has done all it does before the flag is cleared again.
void AutoRun::TakeCancel() {
  if (phase_ != Phase::Armed) return;
  timer_.stop();
  QMetaObject::invokeMethod(this, &AutoRun::Abandon, Qt::QueuedConnection);
}

// The countdown can be given up by the cancel button.
void AutoRun::OfferCancel() {
  workspace_.board.SetCancelShown(true);
  workspace_.board.SetCancelEnabled(true);
}

void AutoRun::ShowText(const QString& text) {
  Q_EMIT TitleChanged(text);
  Q_EMIT TrayTipChanged(text);
}

void AutoRun::Abandon() {
  if (phase_ == Phase::Armed) GiveUp();
}

void AutoRun::GiveUp() {
  if (!workspace_.driver.IsRunning()) {
    workspace_.board.SetCancelShown(false);
    workspace_.board.SetCancelCaption(u"キャンセル"_s);
  }
  Reset();
  Q_EMIT TitleChanged(ProductTitle());
  Q_EMIT Finished(false);
}

// Takes the lock of the list that is open now, in place of one that is held; false when another run
// holds it.
bool AutoRun::LockOpenList() {
  lock_.Release();
  const QString& list = workspace_.urlList.CurrentListFile();
  return list.isEmpty() || lock_.Acquire(list, workspace_.drives.ProgramFolder());
}

QCoro::Task<void> AutoRun::RunBatch() {
  timer_.stop();
  // No longer armed: a program that closes meanwhile waits for the answer to the box below.
  phase_ = Phase::Running;
  // During the countdown another list may have been opened, or this one written anew.
  if (!LockOpenList()) {
    const MessageBox box = MessageBox::Error(ListInUseText(workspace_.urlList.CurrentListFile()));
    co_await workspace_.world.messages.Ask(box);
    GiveUp();
    co_return;
  }
  StatusBoard::Standby standby = workspace_.board.GetStandby();
  standby.visible = true;
  workspace_.board.SetStandby(standby);
  ShowText(u"ダウンロード実行中"_s);
  // A press from before the run is no wish to stop it.
  workspace_.state.ClearCancel();
  co_await workspace_.driver.Drive(true);
  if (trayMode_) Q_EMIT RestoreFromTrayRequested();
  Q_EMIT TitleChanged(ProductTitle());
  co_await workspace_.driver.PowerActionCountdown();
  standby = workspace_.board.GetStandby();
  standby.checked = false;
  standby.visible = false;
  workspace_.board.SetStandby(standby);
  Reset();
  Q_EMIT Finished(true);
}

void AutoRun::Reset() {
  timer_.stop();
  // A command that works beside the countdown has yet to see its cancel.
  if (!workspace_.driver.IsRunning()) workspace_.state.ClearCancel();
  workspace_.driver.SetAfterBatchAction(QString());
  autoStartTime_.clear();
  trayMode_ = false;
  phase_ = Phase::Idle;
  lock_.Release();
}

}  // namespace zentorin
