// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <memory>

#include <QCoro/QCoroTask>

#include "base/activity.h"
#include "crawl/time_slice.h"
#include "download/row_download.h"
#include "download/run_outcome.h"

namespace zentorin {

class FileList;
class JobEditor;
class LogFile;
class MessageBoxes;
class Opener;
class RowCursor;

struct DownloadContext : FetchContext {
  MessageBoxes& messages;
  Opener& opener;
  LogFile& log;
  JobEditor& job;
  FileList& files;
};

struct FinishedRow {
  RowOutcome outcome;
  QString text;     // its status text with the code, as the log has it
  QString address;  // what was asked for, as the log has it
};

// One walk over the selected rows of the file list: fetches each into the job's save folder, marks
// it and logs its outcome.
class DownloadRun {
 public:
  // In a batch nobody is told that no row is selected, and no folder is opened.
  enum class Mode { Single, Batch };
  using RowFinished = std::function<void(const FinishedRow& row)>;  // after its mark is in place

  DownloadRun(const DownloadContext& context, Mode mode, CancelToken cancel,
              RowFinished rowFinished);

  QCoro::Task<RunOutcome> Run();

 private:
  void Start();
  QCoro::Task<void> TellNothingSelected();
  QCoro::Task<void> WalkRows();
  QCoro::Task<bool> TakeRow(RowCursor& rows, int index);
  void AskAhead(RowCursor& rows);
  void PassOver(int index, const QString& address);
  bool Report(const RowOutcome& row, const QString& address);
  QCoro::Task<void> TellFatal(RowOutcome row);
  void EndOfRun();
  void CleanUp();

  DownloadContext context_;
  Mode mode_;
  CancelToken cancel_;
  RowFinished rowFinished_;
  std::unique_ptr<RowDownload> download_;
  QString root_;  // the job's root URL, date templates expanded
  QString logText_;
  QString lastStatusText_;
  Place place_;
  RowCode lastCode_ = RowCode::Complete;
  RunOutcome outcome_;
  TimeSlice slice_;
};

}  // namespace zentorin
