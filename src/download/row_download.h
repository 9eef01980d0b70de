// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "download/download_run.h"
#include "download/save_folder.h"
#include "download/single_download.h"

namespace zentorin {

// The fields of the job that a run reads, as they stood when it started.
struct RunJob {
  QString savePath;  // as the user wrote it
  QString root;      // date templates expanded
  QString rootBase;
  bool treeFolder = false;
  bool overWrite = false;
};

struct RowOutcome {
  int code = 0;          // ResultCode or run-time error number
  QString date;          // the row's date, filled in when it had to be asked for
  QString folderPrefix;  // the local folder in the program's own form, with its separator
  QString folder;        // the same as a path of this system
  QString path;          // the local file, empty when it did not come so far
  int folderError = 0;   // with kFolderNotCreated: why, and for which path
  QString folderAtFault;
  QString reason;  // with kFatal: why, as far as it is known
};

// Takes one row's file to the disk: works out where it goes, and fetches or captures it. What
// `context` refers to must outlive it.
class RowDownload {
 public:
  RowDownload(const DownloadContext& context, RunJob job);
  RowDownload(const RowDownload&) = delete;
  RowDownload& operator=(const RowDownload&) = delete;
  ~RowDownload();

  // The object must outlive the task.
  QCoro::Task<RowOutcome> Fetch(QString address, QString date);

  // Sends the requests of the row that comes next ahead of its turn, when it looks as if it will be
  // fetched: a plain file that is not there yet, whose name hangs on no date.
  void Prepare(const QString& address);

 private:
  class BoardProgress;

  QCoro::Task<int> FetchFile(QString address, RowOutcome& outcome);
  QCoro::Task<int> CaptureStream(QString address, RowOutcome& outcome);
  QCoro::Task<QString> DatePrefix(QString address, QString& date);
  int MayWrite(const QString& path) const;

  DownloadContext context_;
  RunJob job_;
  SaveFolder saveFolder_;
  SingleDownload download_;
  std::unique_ptr<BoardProgress> progress_;
};

}  // namespace zentorin
