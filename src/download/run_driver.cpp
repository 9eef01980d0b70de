// SPDX-License-Identifier: MIT
#include "download/run_driver.h"

#include <utility>

#include "base/activity.h"
#include "base/message_boxes.h"
#include "base/wait.h"
#include "crawl/file_list.h"
#include "download/stream_capture.h"
#include "jobs/job_editor.h"
#include "jobs/log_file.h"
#include "jobs/url_list.h"
#include "launch/opener.h"
#include "power/power_control.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The countdown shows 4.9 first and 0.0 last.
constexpr std::chrono::milliseconds kCountdownStart(4900);

// The preset action that only ends the program.
const QString& CloseAction() {
  static const QString action = u"閉じる"_s;
  return action;
}

}  // namespace

RunDriver::RunDriver(const DownloadContext& context, UrlList& urlList, FileListGenerator& generator,
                     PowerControl& power, QObject* parent)
    : QObject(parent), context_(context), urlList_(urlList), generator_(generator), power_(power) {}

// Only when none runs.
CancelToken RunDriver::Begin() {
  CancelToken cancel = command_.emplace().Token();
  context_.engine.StartRun(context_.choices.connectionsPerHost);
  Q_EMIT RunningChanged(true);
  return cancel;
}

// What was asked ahead and never taken ends with the command.
void RunDriver::End(Unload unload) {
  context_.activity.SetBatch(false);
  if (std::optional<CancelSource> ended = std::exchange(command_, std::nullopt)) ended->Cancel();
  Q_EMIT RunningChanged(false);
  if (unload == Unload::Yes) Q_EMIT CloseRequested();
}

bool RunDriver::RefuseWhileRunning() {
  if (IsRunning()) {
    context_.activity.Say(u"処理中です。終了を待つか、キャンセルしてください。"_s);
  }
  return IsRunning();
}

QCoro::Task<ListOutcome> RunDriver::GenerateCommand(bool listOnly) {
  ListOutcome outcome;
  if (RefuseWhileRunning()) co_return outcome;
  const CancelToken cancel = Begin();
  outcome = co_await generator_.Generate(listOnly, cancel);
  const bool incomplete = outcome.missing.AnyFailure() && !outcome.rootMissing;
  if (incomplete && !cancel.Cancelled()) {
    context_.activity.Say(u"ファイルリストは完全ではありません（%1）"_s.arg(outcome.missing.Text()),
                          Tone::Fault);
  }
  End(Unload::No);
  co_return outcome;
}

QCoro::Task<RunOutcome> RunDriver::DownloadCommand(bool batch) {
  RunOutcome outcome;
  if (RefuseWhileRunning()) co_return outcome;
  const CancelToken cancel = Begin();
  context_.activity.SetAfterBatch({});
  if (batch) {
    const MessageBox question{
        .title = u"一括ダウンロード"_s,
        .text = u"全てのＵＲＬリストから一括ダウンロードします。よろしいですか？"_s,
        .buttons = MessageBox::Buttons::OkCancel};
    const MessageBox::Answer answer = co_await context_.messages.Ask(question);
    if (answer != MessageBox::Answer::Ok) {
      End(Unload::No);
      co_return outcome;
    }
  }
  outcome = co_await Drive(batch, cancel);
  Unload unload = Unload::No;
  if (batch) unload = co_await AfterBatchStep(outcome, cancel);
  if (context_.options.autoClose) unload = Unload::Yes;
  afterBatchAction_.clear();
  Q_EMIT PresetsCleared();
  End(unload);
  co_return outcome;
}

QCoro::Task<RunOutcome> RunDriver::BatchCommand() {
  RunOutcome outcome;
  if (IsRunning()) co_return outcome;
  const CancelToken cancel = Begin();
  outcome = co_await Drive(true, cancel);
  const Unload unload = co_await AfterBatchStep(outcome, cancel);
  End(unload);
  co_return outcome;
}

void RunDriver::CancelCommand() {
  // What it ends may end the command.
  std::optional<CancelSource> command = command_;
  if (!command) return;
  context_.activity.SetCancelling();
  command->Cancel();
}

QCoro::Task<RunOutcome> RunDriver::Drive(bool batch, CancelToken cancel) {
  Activity& activity = context_.activity;
  std::unique_ptr<SleepHold> awake;
  if (batch) awake = power_.KeepAwake();
  activity.SetBatch(batch);
  auto downloading = std::make_unique<Activity::Scope>(activity, Phase::Downloading);
  activity.Say({});
  runBytes_ = 0;
  activity.SetRunBytes(0);
  context_.capture.FindTool();
  RunOutcome outcome;
  const Outcome logged = context_.log.Append(batch ? u"Start - 一括"_s : u"Start"_s, true);
  if (!logged.Ok()) {
    outcome.anyFailure = true;
    const MessageBox box = MessageBox::Error(logged.NumberAndMessage());
    co_await context_.messages.Ask(box);
    activity.Say({});
  } else if (batch) {
    outcome = co_await AllJobs(cancel);
  } else {
    outcome = co_await SingleRun(cancel);
  }
  outcome.cancelled = cancel.Cancelled();
  activity.SetAddress({});
  downloading.reset();
  awake.reset();
  Q_EMIT RunEnded(outcome);
  if (batch) Q_EMIT BatchEnded(outcome);
  co_return outcome;
}

QCoro::Task<RunOutcome> RunDriver::Download(DownloadRun::Mode mode, CancelToken cancel) {
  DownloadRun run(context_, mode, cancel, [this](const FinishedRow& row) {
    runBytes_ += row.outcome.bytes;
    context_.activity.SetRunBytes(runBytes_);
    Q_EMIT RowFinished(row);
  });
  const RunOutcome outcome = co_await run.Run();
  co_return outcome;
}

QCoro::Task<RunOutcome> RunDriver::SingleRun(CancelToken cancel) {
  RunOutcome outcome = co_await Download(DownloadRun::Mode::Single, cancel);
  outcome.jobs = 1;
  if (!outcome.errorFlag) {
    context_.activity.Say(u"処理終了"_s, Tone::Good);
  } else if (!cancel.Cancelled() && !outcome.fatal && context_.log.Exists()) {
    context_.opener.OpenWithDefaultHandler(context_.log.Path());
  }
  co_return outcome;
}

// The box that chooses what happens after the batch. A preset "閉じる" needs no box.
void RunDriver::OfferAction() {
  const bool preset = !afterBatchAction_.isEmpty() && afterBatchAction_ != CloseAction();
  context_.activity.SetAfterBatch(
      {.offered = true, .chosen = preset, .action = preset ? afterBatchAction_ : u"スタンバイ"_s});
}

QCoro::Task<RunOutcome> RunDriver::AllJobs(CancelToken cancel) {
  OfferAction();
  RunOutcome outcome;
  for (int row = 0; row < urlList_.Count() && !cancel.Cancelled() && !outcome.fatal; ++row) {
    urlList_.Select(row);
    context_.activity.SetJob({.number = row + 1, .count = urlList_.Count()});
    if (!context_.job.Flag(TargetUrlItem::Skip)) {
      const RunOutcome job = co_await BatchJob(cancel);
      outcome.Add(job);
    }
    co_await YieldToEventLoop();
  }
  context_.activity.SetJob({});
  if (outcome.errorFlag) context_.activity.Say(u"異常終了"_s, Tone::Fault);
  co_return outcome;
}

QCoro::Task<RunOutcome> RunDriver::BatchJob(CancelToken cancel) {
  RunOutcome outcome;
  const ListOutcome list = co_await generator_.Generate(false, cancel);
  const bool listedByDate = context_.job.Flag(TargetUrlItem::Opt);
  const bool refused = list.refusal != ListOutcome::Refusal::None && !listedByDate;
  // The rows that are left belong to another job.
  if (refused) context_.files.ClearFileList();
  if (!cancel.Cancelled()) outcome = co_await Download(DownloadRun::Mode::Batch, cancel);
  outcome.jobs = 1;
  outcome.anyFailure |= list.failed || refused;
  outcome.missing.Add(list.missing);
  if (list.rootMissing) {
    const QString& description = context_.job[TargetUrlItem::Description];
    outcome.rootsMissing += description.isEmpty() ? context_.job[TargetUrlItem::Root] : description;
    outcome.errorFlag = true;
  }
  context_.activity.Say(u"- 処理終了 -"_s);
  co_return outcome;
}

// Whoever stops the countdown is there and keeps the window; after a fatal error nobody is.
QCoro::Task<RunDriver::Unload> RunDriver::AfterBatchStep(RunOutcome& outcome, CancelToken cancel) {
  Activity& activity = context_.activity;
  const AfterBatch choice = activity.Now().afterBatch;
  Unload unload = afterBatchAction_.isEmpty() ? Unload::No : Unload::Yes;
  if (choice.chosen) {
    activity.Say(choice.action + u" します。"_s);
    activity.SetTimeLeft(kCountdownStart);
    const Activity::Scope countingDown(activity, Phase::CountingDown);
    bool goesOn = false;
    if (!outcome.fatal) goesOn = co_await CountDown(cancel);
    if (goesOn) {
      goesOn = co_await PerformAction(choice.action, cancel);
    } else {
      activity.Say({});
    }
    if (!goesOn && !outcome.fatal) unload = Unload::No;
    outcome.cancelled = cancel.Cancelled();
  }
  activity.SetAfterBatch({});
  co_return unload;
}

// The log is on disk before the power may be gone; a disk that fails does not keep the power on. A
// refused action changes nothing else. False when a cancel stopped it.
QCoro::Task<bool> RunDriver::PerformAction(QString action, CancelToken cancel) {
  Activity& activity = context_.activity;
  const Outcome durable = context_.log.Sync();
  if (!durable.Ok()) activity.Say(durable.message, Tone::Fault);
  const PowerOutcome outcome = co_await power_.Perform(action, cancel);
  if (outcome.cancelled && outcome.text.isEmpty()) activity.Say({});
  if (!outcome.text.isEmpty()) {
    activity.Say(outcome.text, outcome.done ? Tone::Good : Tone::Fault);
    Q_EMIT PowerAnswered(outcome.text);
  }
  if (outcome.tried) {
    const Outcome logged = context_.log.Append(outcome.text);
    if (!logged.Ok()) activity.Say(logged.message, Tone::Fault);
  }
  co_return !outcome.cancelled;
}

// False when it was stopped: by a cancel, or by unchecking the box.
QCoro::Task<bool> RunDriver::CountDown(CancelToken cancel) {
  constexpr std::chrono::milliseconds kStep(100);
  for (auto left = kCountdownStart; left.count() >= 0; left -= kStep) {
    if (cancel.Cancelled()) co_return false;
    context_.activity.SetTimeLeft(left);
    const bool undisturbed = co_await SleepUnlessCancelled(cancel, countdownStep_);
    if (!undisturbed || !context_.activity.Now().afterBatch.chosen) co_return false;
  }
  co_return true;
}

}  // namespace zentorin
