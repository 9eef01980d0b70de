// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <optional>

#include <QCoro/QCoroTask>

#include "crawl/file_list_generator.h"
#include "download/download_run.h"

namespace zentorin {

class PowerControl;
class UrlList;

// The commands that start and stop work. One of them runs at a time.
class RunDriver : public QObject {
  Q_OBJECT

 public:
  RunDriver(const DownloadContext& context, UrlList& urlList, FileListGenerator& generator,
            PowerControl& power, QObject* parent = nullptr);

  // Between two steps of the countdown; tests shorten it.
  void SetCountdownStep(std::chrono::milliseconds step) { countdownStep_ = step; }

  // `AfterBatchAction`: preset on the command line. Only tests read it; kept as the named field.
  void SetAfterBatchAction(const QString& action) { afterBatchAction_ = action; }
  const QString& AfterBatchAction() const { return afterBatchAction_; }

  bool IsRunning() const { return command_.has_value(); }
  // True while a command runs, after a word on the status line: for what cannot go beside it.
  bool RefuseWhileRunning();

  // `cmdGo_All`. A command that is refused comes back with nothing done.
  QCoro::Task<ListOutcome> GenerateCommand(bool listOnly);
  // `cmdAllDownload`: with `batch` asks first and counts down at the end.
  QCoro::Task<RunOutcome> DownloadCommand(bool batch);
  // The batch as an armed unattended run starts it: no question, then the step after it.
  QCoro::Task<RunOutcome> BatchCommand();
  void CancelCommand();  // `cmdCancel`; does nothing at rest

 Q_SIGNALS:
  void RunningChanged(bool running);
  void RunEnded(const zentorin::RunOutcome& outcome);    // of one file list, or of a batch
  void BatchEnded(const zentorin::RunOutcome& outcome);  // the step after it is yet to come
  void PowerAnswered(const QString& text);               // what the system said to a power action
  void RowFinished(const zentorin::FinishedRow& row);
  // The presets of the command line are spent: a download command that the user agreed to ends.
  void PresetsCleared();
  // After an action preset on the command line or by "auto close", when nothing runs any more.
  void CloseRequested();

 private:
  enum class Unload { No, Yes };

  CancelToken Begin();
  void End(Unload unload);
  QCoro::Task<RunOutcome> Drive(bool batch, CancelToken cancel);
  QCoro::Task<RunOutcome> SingleRun(CancelToken cancel);
  QCoro::Task<RunOutcome> AllJobs(CancelToken cancel);
  QCoro::Task<RunOutcome> BatchJob(CancelToken cancel);
  QCoro::Task<RunOutcome> Download(DownloadRun::Mode mode, CancelToken cancel);
  QCoro::Task<Unload> AfterBatchStep(RunOutcome& outcome, CancelToken cancel);
  QCoro::Task<bool> PerformAction(QString action, CancelToken cancel);
  QCoro::Task<bool> CountDown(CancelToken cancel);
  void OfferAction();

  DownloadContext context_;
  UrlList& urlList_;
  FileListGenerator& generator_;
  PowerControl& power_;
  QString afterBatchAction_;
  std::chrono::milliseconds countdownStep_{100};
  std::optional<CancelSource> command_;  // the one in hand
  qint64 runBytes_ = 0;
};

}  // namespace zentorin
