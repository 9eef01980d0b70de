// SPDX-License-Identifier: MIT
#include "download/run_driver.h"

#include "base/message_boxes.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "base/wait.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "download/stream_capture.h"
#include "jobs/job_editor.h"
#include "jobs/log_file.h"
#include "jobs/url_list.h"
#include "launch/opener.h"
#include "power/power_control.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The preset action that only ends the program.
const QString& CloseAction() {
  static const QString action = u"閉じる"_s;
  return action;
}

}  // namespace

RunDriver::RunDriver(const DownloadContext& context, UrlList& urlList, FileListGenerator& generator,
                     PowerControl& power, QObject* parent)
    : QObject(parent),
      context_(context),
      urlList_(urlList),
      generator_(generator),
      power_(power),
      run_(context) {
  connect(&run_, &DownloadRun::RowFinished, this, &RunDriver::RowFinished);
}

// False when a command runs already.
bool RunDriver::Begin() {
  if (running_) return false;
  running_ = true;
  Q_EMIT RunningChanged(true);
  return true;
}

void RunDriver::End() {
  HideCancel();
  running_ = false;
  Q_EMIT RunningChanged(false);
}

bool RunDriver::RefuseWhileRunning() {
  if (running_) {
    context_.board.SetStatus(u"処理中です。終了を待つか、キャンセルしてください。"_s);
  }
  return running_;
}

QCoro::Task<void> RunDriver::GenerateCommand(bool listOnly) {
  if (RefuseWhileRunning() || !Begin()) co_return;
  context_.state.ClearCancel();
  ShowCancel();
  co_await generator_.Generate(listOnly);
  context_.state.ClearCancel();
  RefreshCounts();
  End();
}

QCoro::Task<void> RunDriver::DownloadCommand(bool batch) {
  if (RefuseWhileRunning() || !Begin()) co_return;
  context_.state.ClearCancel();
  StatusBoard& board = context_.board;
  StatusBoard::Standby standby = board.GetStandby();
  standby.visible = false;
  board.SetStandby(standby);
  board.SetFileCount({});

  MessageBox::Answer answer = MessageBox::Answer::Ok;
  if (batch) {
    MessageBox box;
    box.title = u"一括ダウンロード"_s;
    box.text = u"全てのＵＲＬリストから一括ダウンロードします。よろしいですか？"_s;
    box.buttons = MessageBox::Buttons::OkCancel;
    answer = co_await context_.messages.Ask(box);
  }
  const bool agreed = answer == MessageBox::Answer::Ok;
  Unload unload = Unload::No;
  if (agreed) {
    co_await DriveSteps(batch);
    if (batch) unload = co_await CountdownSteps();
    if (context_.options.autoClose) unload = Unload::Yes;
  }

  if (agreed) {
    afterBatchAction_.clear();
    Q_EMIT PresetsCleared();
  }
  context_.state.ClearCancel();
  standby = board.GetStandby();
  standby.visible = standby.checked = false;
  board.SetStandby(standby);
  RefreshCounts();
  End();
  if (unload == Unload::Yes) Q_EMIT CloseRequested();
}

QCoro::Task<void> RunDriver::Drive(bool batch) {
  if (!Begin()) co_return;
  co_await DriveSteps(batch);
  End();
}

QCoro::Task<void> RunDriver::PowerActionCountdown() {
  if (!Begin()) co_return;
  const Unload unload = co_await CountdownSteps();
  End();
  if (unload == Unload::Yes) Q_EMIT CloseRequested();
}

void RunDriver::CancelCommand() {
  context_.board.SetCancelCaption(u"キャンセル処理中"_s);
  context_.state.RequestCancel();
}

QCoro::Task<void> RunDriver::DriveSteps(bool batch) {
  anyFailure_ = wasCancelled_ = endedByFatal_ = false;
  std::unique_ptr<SleepHold> awake;
  if (batch) {
    awake = power_.KeepAwake();
    Q_EMIT BatchStarted();
  }
  StatusBoard& board = context_.board;
  board.SetBusy(true);
  board.SetStatus({});
  context_.state.SetErrorFlag(false);
  context_.capture.FindTool();
  const QString start = batch ? u"Start - 一括"_s : u"Start"_s;
  const FileOutcome logged = context_.log.Append(start, true);
  if (!logged.Ok()) {
    anyFailure_ = true;
    const MessageBox box = MessageBox::Error(QString::number(logged.error) + u' ' + logged.message);
    co_await context_.messages.Ask(box);
    board.SetStatus({});
  } else if (batch) {
    co_await AllJobs();
  } else {
    co_await SingleRun();
  }
  wasCancelled_ = context_.state.CancelRequested() && !endedByFatal_;
  board.SetBusy(false);
  board.SetFile({});
  awake.reset();
  if (batch) Q_EMIT BatchEnded();
}

QCoro::Task<void> RunDriver::RunDownload() {
  co_await run_.Run();
  if (run_.LastRunFailed()) anyFailure_ = true;
  if (run_.LastRunWasFatal()) endedByFatal_ = true;
}

QCoro::Task<void> RunDriver::SingleRun() {
  co_await RunDownload();
  const RunState& state = context_.state;
  if (!state.ErrorFlag()) {
    context_.board.SetStatus(u"処理終了"_s, StatusBoard::kBlue);
  } else if (!state.CancelRequested() && context_.log.Exists()) {
    context_.opener.OpenWithDefaultHandler(context_.log.Path());
  }
}

// The box that chooses what happens after the batch. A preset "閉じる" needs no box.
void RunDriver::OfferStandby() {
  const bool preset = !afterBatchAction_.isEmpty() && afterBatchAction_ != CloseAction();
  StatusBoard::Standby standby;
  standby.visible = true;
  standby.checked = preset;
  standby.caption = preset ? afterBatchAction_ : u"スタンバイ"_s;
  standby.toolTip = u"一括ダウンロード終了後にＰＣを「"_s + standby.caption + u"」状態にします。"_s;
  context_.board.SetStandby(standby);
}

// Only here is the cancel flag looked at between two jobs, and nothing clears it on the way to
// this look: a press at any time ends the batch after the job in hand.
QCoro::Task<void> RunDriver::AllJobs() {
  OfferStandby();
  ShowCancel();
  for (int row = 0; row < urlList_.Count(); ++row) {
    if (context_.state.CancelRequested()) break;
    urlList_.Select(row);
    const bool skip = context_.job.Flag(TargetUrlItem::Skip);
    if (!skip) co_await BatchJob();
    co_await YieldToEventLoop();
  }
  if (context_.state.ErrorFlag()) {
    context_.board.SetStatus(u"異常終了"_s, StatusBoard::kRed);
  }
}

QCoro::Task<void> RunDriver::BatchJob() {
  Q_EMIT JobStarted();
  context_.state.SetRunMode(u"一括"_s);
  const GenerateResult generated = co_await generator_.Generate(false);
  // The generator frees the surface and the cancel button when it ends; the batch goes on.
  context_.board.SetBusy(true);
  context_.board.SetCancelEnabled(true);
  if (generator_.LastRunFailed()) anyFailure_ = true;
  const bool listedByDate = context_.job.Flag(TargetUrlItem::Opt);
  if (generated == GenerateResult::Refused && !listedByDate) {
    // The rows that are left belong to another job.
    anyFailure_ = true;
    context_.files.ClearFileList();
    context_.board.SetFileCount({});
  }
  const bool cancelled = context_.state.CancelRequested();
  if (!cancelled) co_await RunDownload();
  context_.state.SetRunMode({});
  context_.board.SetStatus(u"- 処理終了 -"_s);
}

QCoro::Task<RunDriver::Unload> RunDriver::CountdownSteps() {
  const StatusBoard::Standby standby = context_.board.GetStandby();
  if (standby.checked) {
    ShowCancel();
    context_.board.SetStatus(standby.caption + u" します。"_s);
    bool goesOn = co_await CountDown();
    if (goesOn) {
      goesOn = co_await PerformAction(standby.caption);
    } else {
      context_.board.SetStatus({});
    }
    if (!goesOn) {
      context_.board.SetFile({});
      if (context_.state.CancelRequested() && !endedByFatal_) wasCancelled_ = true;
      // Whoever stops the countdown is there and keeps the window; after a fatal error nobody is.
      const bool unload = endedByFatal_ && !afterBatchAction_.isEmpty();
      co_return unload ? Unload::Yes : Unload::No;
    }
    context_.board.SetCancelShown(false);
  }
  co_return afterBatchAction_.isEmpty() ? Unload::No : Unload::Yes;
}

// The log is on disk before the power may be gone; a disk that fails does not keep the power on. A
// refused action changes nothing else. False when a cancel stopped it.
QCoro::Task<bool> RunDriver::PerformAction(QString action) {
  StatusBoard& board = context_.board;
  const FileOutcome durable = context_.log.Sync();
  if (!durable.Ok()) board.SetStatus(durable.message, StatusBoard::kRed);
  const PowerOutcome outcome = co_await power_.Perform(action, context_.state);
  if (outcome.cancelled && outcome.text.isEmpty()) board.SetStatus({});
  if (!outcome.text.isEmpty()) {
    board.SetStatus(outcome.text, outcome.done ? StatusBoard::kBlue : StatusBoard::kRed);
    Q_EMIT PowerAnswered(outcome.text);
  }
  if (outcome.tried) {
    const FileOutcome logged = context_.log.Append(outcome.text);
    if (!logged.Ok()) board.SetStatus(logged.message, StatusBoard::kRed);
  }
  co_return !outcome.cancelled;
}

// "4.9" down to "0.0". False when it was stopped: by a cancel, or by unchecking the box.
QCoro::Task<bool> RunDriver::CountDown() {
  constexpr int kStartMs = 5000;
  constexpr int kStepMs = 100;
  constexpr double kMsPerSecond = 1000;
  for (int left = kStartMs - kStepMs; left >= 0; left -= kStepMs) {
    if (context_.state.CancelRequested()) co_return false;
    context_.board.SetFile(QString::number(left / kMsPerSecond, 'f', 1));
    context_.board.AnnounceProgress();
    const bool undisturbed = co_await SleepUnlessCancelled(context_.state, countdownStep_);
    if (!undisturbed || !context_.board.GetStandby().checked) co_return false;
  }
  co_return true;
}

void RunDriver::ShowCancel() {
  context_.board.SetCancelShown(true);
  context_.board.SetCancelEnabled(true);
}

void RunDriver::HideCancel() {
  context_.board.SetCancelShown(false);
  context_.board.SetCancelCaption(u"キャンセル"_s);
}

void RunDriver::RefreshCounts() {
  const int count = context_.files.Count();
  context_.board.SetFileCount(count == 0 ? QString() : QString::number(count));
}

}  // namespace zentorin
