// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include <QCoro/QCoroTask>
#include <unistd.h>

#include "base/cancel_token.h"
#include "download/local_file.h"
#include "download/row_code.h"
#include "net/miss_reason.h"

namespace zentorin {

class Activity;

struct FileDownload {
  RowCode code = RowCode::Complete;
  MissReason reason;  // why the address was not to be had
  bool maySucceedLater = false;
  bool spoiled = false;  // what stood at the path holds bytes of a transfer without an end
};

// Fetches one address after the other into files, for one command.
class SingleDownload {
 public:
  static constexpr qint64 kMaxWholeBodyBytes = 64LL * 1024 * 1024;  // of HTTPDownloadFile()

  SingleDownload(HttpEngine& engine, Activity& activity, CancelToken cancel,
                 LocalFile::WriteCall write = ::write);

  // `path` is a path of this system whose folder exists. A new file is there whole or not at all;
  // an old one that is half written over is the caller's to delete. Codes: Complete, Cancelled,
  // Fatal when the address is not available (nothing is opened then), SkipExisting, or a run-time
  // error.
  QCoro::Task<FileDownload> DownloadToFile(QString url, QString path);

  // Sends the request for an address ahead of its turn. DownloadToFile() takes it over when it
  // comes for that address next, and drops it when it comes for another one. What failed for having
  // been asked early is asked anew at its turn.
  void Prepare(const QString& url);

  // Nothing in the program calls it; kept as the whole-body way, with no progress and no outcome.
  // Writes nothing when the headers contain "404 Not Found", or the answer is broken or too long.
  QCoro::Task<void> HTTPDownloadFile(QString url, QString path);

 private:
  struct Prepared {
    QString url;
    std::unique_ptr<HttpTransfer> transfer;
  };

  std::unique_ptr<HttpTransfer> TakePrepared(const QString& url);
  QCoro::Task<FileDownload> Receive(HttpTransfer& transfer, QString url, QString path);
  QCoro::Task<RowCode> CopyBody(HttpTransfer& transfer, LocalFile& file, qint64 length,
                                qint64& written);

  HttpEngine& engine_;
  Activity& activity_;
  CancelToken cancel_;
  LocalFile::WriteCall write_;
  std::optional<Prepared> prepared_;
  bool alone_ = false;    // nothing is asked ahead any more
  QByteArray wholeBody_;  // of the last HTTPDownloadFile()
};

}  // namespace zentorin
