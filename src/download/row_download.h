// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "download/row_code.h"
#include "download/save_folder.h"
#include "download/single_download.h"

namespace zentorin {

class DisplayClock;
class Drives;
class MyXMLHttpRequest;
class StreamCapture;
struct FetchChoices;

struct DownloadOptions {
  bool openFolder = true;
  bool vlcShow = false;
  bool wmaToMp3 = true;
  int streamingTool = 0;  // 0 VLC media player, 1 StreamGet
  bool addDate = false;
  QString addDateFormat = "yyyymmddhh_";
  bool autoClose = false;  // the program ends after a download command
};

struct FetchContext {
  HttpEngine& engine;
  MyXMLHttpRequest& http;
  Activity& activity;
  StreamCapture& capture;
  const Drives& drives;
  const DownloadOptions& options;
  const DisplayClock& clock;
  const FetchChoices& choices;
};

// The fields of the job that a run reads, as they stood when it started.
struct RunJob {
  QString savePath;  // as the user wrote it
  QString root;      // date templates expanded
  QString rootBase;
  bool treeFolder = false;
  bool overWrite = false;
};

struct RowOutcome {
  RowCode code = RowCode::Complete;
  MissReason reason;      // why the file, or the date in its name, was not to be had
  QString path;           // the local file, empty when it did not come so far
  qint64 bytes = 0;       // size of the file after a complete download, else 0
  QString date;           // the row's date, filled in when it had to be asked for
  QString folderPrefix;   // the local folder in the program's own form, with its separator
  QString folder;         // the same as a path of this system
  Outcome folderOutcome;  // with FolderNotCreated: why, and for which path
};

// Takes one row's file to the disk: works out where it goes, and fetches or captures it.
class RowDownload {
 public:
  RowDownload(const FetchContext& context, RunJob job, CancelToken cancel);

  QCoro::Task<RowOutcome> Fetch(QString address, QString date);

  // Sends the request of a row to come ahead of its turn, when it looks as if it will be fetched: a
  // plain file that is not there yet, whose name hangs on no date that is still to be asked for.
  // False when no more can wait.
  bool AskEarly(const QString& address, const QString& date);

 private:
  QCoro::Task<RowOutcome> TakeRow(QString address, QString date);
  QCoro::Task<RowCode> FetchFile(QString address, RowOutcome& outcome);
  QCoro::Task<RowCode> CaptureStream(QString address, RowOutcome& outcome);
  QCoro::Task<QString> StreamAddress(QString address, RowOutcome& outcome);
  QCoro::Task<QString> DatePrefix(QString address, RowOutcome& outcome);
  std::optional<RowCode> Refusal(const QString& path) const;
  bool NeedsDate() const;
  QString PrefixOf(const QString& date) const;
  QString SubFolder(const QString& address) const;  // below the save folder, in its own form
  QString NameOf(const QString& prefix, const QString& address) const;

  FetchContext context_;
  RunJob job_;
  CancelToken cancel_;
  SaveFolder saveFolder_;
  int folder_ = -1;  // of the row in hand, open; the save folder's
  SingleDownload download_;
};

}  // namespace zentorin
