// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include <QCoro/QCoroTask>

#include "download/finished_row.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

class DisplayClock;
class Drives;
class FileList;
class HttpEngine;
class JobEditor;
class LogFile;
class MessageBoxes;
class MyXMLHttpRequest;
class Opener;
class RowCursor;
class RowDownload;
class RunState;
class StatusBoard;
class StreamCapture;
struct ClockOptions;
struct RowOutcome;

// The settings that a download reads.
struct DownloadOptions {
  bool openFolder = true;
  bool vlcShow = false;
  bool wmaToMp3 = true;
  int streamingTool = 0;  // 0 VLC media player, 1 StreamGet
  bool addDate = false;
  QString addDateFormat = u"yyyymmddhh_"_s;
  bool autoClose = false;  // the program ends after a download command
};

// What a run works on and with. All must outlive it.
struct DownloadContext {
  HttpEngine& engine;
  MyXMLHttpRequest& http;
  RunState& state;
  StatusBoard& board;
  MessageBoxes& messages;
  StreamCapture& capture;
  Opener& opener;
  LogFile& log;
  const Drives& drives;
  const DownloadOptions& options;
  const ClockOptions& clockOptions;
  JobEditor& job;
  FileList& files;
  const DisplayClock& clock;  // base date of the root URL's templates
};

// Fetches the selected rows of the file list into the job's save folder, marks each row and logs
// its outcome.
class DownloadRun : public QObject {
  Q_OBJECT

 public:
  explicit DownloadRun(const DownloadContext& context, QObject* parent = nullptr);
  ~DownloadRun() override;

  QCoro::Task<void> Run();

  // True when the last Run() had at least one row that failed, ended by a fatal error or could not
  // write its log.
  bool LastRunFailed() const { return lastRunFailed_; }
  // True when a fatal error ended the last Run(). Then the cancel flag is set without the user
  // having asked for it.
  bool LastRunWasFatal() const { return lastRunWasFatal_; }

 Q_SIGNALS:
  // After each row whose result was reported, with its mark and log text in place.
  void RowFinished(const zentorin::FinishedRow& row);

 private:
  void Start();
  QCoro::Task<void> TellNothingSelected();
  QCoro::Task<void> WalkRows();
  QCoro::Task<bool> TakeRow(RowCursor& rows, int index);
  bool Report(const RowOutcome& outcome, const QString& address);
  QCoro::Task<void> TellFatal(RowOutcome outcome);
  void EndOfRun();
  void CleanUp();

  DownloadContext context_;
  std::unique_ptr<RowDownload> download_;  // of the run under way
  QString root_;                           // its root URL, date templates expanded
  QString logText_;
  QString lastStatusText_;
  int total_ = 0;
  int counter_ = 0;
  int completed_ = 0;
  int lastResult_ = 0;
  bool lastRunFailed_ = false;
  bool lastRunWasFatal_ = false;
};

}  // namespace zentorin
