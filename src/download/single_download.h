// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <memory>

#include <QCoro/QCoroTask>
#include <unistd.h>

#include "base/cancel_token.h"
#include "download/local_file.h"
#include "download/resume_point.h"
#include "download/row_code.h"
#include "download/speed_limit.h"
#include "net/fetch_choices.h"
#include "net/miss_reason.h"

namespace zentorin {

class Activity;

struct FileDownload {
  RowCode code = RowCode::Complete;
  MissReason reason;     // why the address was not to be had
  qint64 bytes = 0;      // size of the file after a complete download
  bool spoiled = false;  // what stood at the path holds bytes of a transfer without an end
};

// Fetches addresses into files, one after the other, for one command.
class SingleDownload {
 public:
  static constexpr qint64 kMaxWholeBodyBytes = 64LL * 1024 * 1024;  // of HTTPDownloadFile()

  SingleDownload(HttpEngine& engine, Activity& activity, const FetchChoices& choices,
                 CancelToken cancel, LocalFile::WriteCall write = ::write);

  // `path` is a path of this system whose folder exists; `folder` as of LocalFile::Open(). A new
  // file is there whole or not at all; an old one that is half written over is the caller's to
  // delete. Codes: Complete, Cancelled, Fatal when the address is not available (nothing is opened
  // then), SkipExisting, or a run-time error.
  QCoro::Task<FileDownload> DownloadToFile(QString url, QString path, int folder = AT_FDCWD);

  // Sends the request for an address ahead of its turn. DownloadToFile() takes it over; what failed
  // for having been asked early is asked anew then. False when no more can wait.
  bool AskEarly(const QString& url);
  void DropEarly(const QString& url) { early_.erase(url); }
  void UseFewerDescriptors();  // fewer wait from now on, and none that do

  // Nothing in the program calls it; kept as the whole-body way, with no progress and no outcome.
  // Writes nothing when the headers contain "404 Not Found", or the answer is broken or too long.
  QCoro::Task<void> HTTPDownloadFile(QString url, QString path);

 private:
  // One try of one file.
  struct Try {
    FileDownload result;
    HttpFailure failure = HttpFailure::None;
    bool mayPass = false;  // another try may end better
  };

  HttpRequest RequestFor(const QString& url) const;
  std::unique_ptr<HttpTransfer> TakeEarly(const QString& url);
  // Where a body goes, and how far it has come.
  struct Target {
    QString path;
    int folder;
    LocalFile file;
    ResumePoint point;
  };

  QCoro::Task<Try> Receive(HttpTransfer& transfer, QString url, Target& target);
  Outcome Place(const HttpHead& head, Target& target) const;
  QCoro::Task<Outcome> CopyBody(HttpTransfer& transfer, Target& target);
  void NoteRefusal(Try& attempt, HttpFailure failure, int status, const MissReason& reason);
  void NoteFault(Try& attempt, const Outcome& fault);

  HttpEngine& engine_;
  Activity& activity_;
  const FetchChoices& choices_;
  CancelToken cancel_;
  LocalFile::WriteCall write_;
  SpeedLimit speed_;
  std::map<QString, std::unique_ptr<HttpTransfer>> early_;  // by address
  size_t maxEarly_;
  QString inHand_;        // the address of the file
  QByteArray wholeBody_;  // of the last HTTPDownloadFile()
};

}  // namespace zentorin
