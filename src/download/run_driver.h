// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

#include "download/download_run.h"

namespace zentorin {

class FileListGenerator;
class PowerControl;
class UrlList;

// The commands that start and stop work: generate, download, download everything, cancel.
// One command runs at a time: a second call while one runs is refused. All references outlive it.
class RunDriver : public QObject {
  Q_OBJECT

 public:
  RunDriver(const DownloadContext& context, UrlList& urlList, FileListGenerator& generator,
            PowerControl& power, QObject* parent = nullptr);

  // Milliseconds between two steps of the countdown; tests shorten them.
  void SetCountdownStep(std::chrono::milliseconds step) { countdownStep_ = step; }

  // `AfterBatchAction`: the action that the command line preset; empty when none.
  void SetAfterBatchAction(const QString& action) { afterBatchAction_ = action; }
  const QString& AfterBatchAction() const { return afterBatchAction_; }

  bool IsRunning() const { return running_; }
  // For commands that a run leaves enabled and that cannot go beside it: true while one runs, after
  // a word on the status line.
  bool RefuseWhileRunning();

  // `cmdGo_All`: clears a stale cancel, generates, restores the cancel button.
  QCoro::Task<void> GenerateCommand(bool listOnly);
  // `cmdAllDownload`: with `batch` asks first and counts down at the end.
  QCoro::Task<void> DownloadCommand(bool batch);
  // The driver alone, as an armed unattended run calls it.
  QCoro::Task<void> Drive(bool batch);
  // The step after a batch: countdown and power action when the box is checked; asks the program to
  // end when an action was preset.
  QCoro::Task<void> PowerActionCountdown();
  // `cmdCancel`.
  void CancelCommand();

  // Any row or job of the last Drive() failed, a list could not be made, a fatal error ended it or
  // the log could not be written.
  bool AnyFailure() const { return anyFailure_; }
  // The user ended the last Drive() or the countdown after it. A fatal error, which sets the cancel
  // flag too, does not count.
  bool WasCancelled() const { return wasCancelled_; }

 Q_SIGNALS:
  void RunningChanged(bool running);
  // The walk over all jobs, each job in it that is not skipped, and its end with the outcome known.
  void BatchStarted();
  void JobStarted();
  void BatchEnded();
  // What the system said to a power action.
  void PowerAnswered(const QString& text);
  // Passed on from the download run.
  void RowFinished(const zentorin::FinishedRow& row);
  // The presets of the command line are spent: a download command that the user agreed to ends.
  void PresetsCleared();
  // The window is to be unloaded: after an action preset on the command line, or by "auto close".
  // Emitted when nothing runs any more.
  void CloseRequested();

 private:
  enum class Unload { No, Yes };

  bool Begin();
  void End();
  QCoro::Task<void> DriveSteps(bool batch);
  QCoro::Task<void> SingleRun();
  QCoro::Task<void> AllJobs();
  QCoro::Task<void> BatchJob();
  QCoro::Task<Unload> CountdownSteps();
  QCoro::Task<bool> PerformAction(QString action);
  QCoro::Task<bool> CountDown();
  QCoro::Task<void> RunDownload();
  void OfferStandby();
  void ShowCancel();
  void HideCancel();
  void RefreshCounts();

  DownloadContext context_;
  UrlList& urlList_;
  FileListGenerator& generator_;
  PowerControl& power_;
  DownloadRun run_;
  QString afterBatchAction_;
  std::chrono::milliseconds countdownStep_{100};
  bool running_ = false;
  bool anyFailure_ = false;
  bool wasCancelled_ = false;
  bool endedByFatal_ = false;
};

}  // namespace zentorin
