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
#include "net/http_engine.h"

namespace zentorin {

class Activity;
class MyXMLHttpRequest;

struct FileDownload {
  RowCode code = RowCode::Complete;
  // The path is a link or a folder, or not permitted: what lies there is none of the download's.
  bool refused = false;
};

// Fetches one address after the other into files, for one command.
class SingleDownload {
 public:
  static constexpr qint64 kMaxWholeBodyBytes = 64LL * 1024 * 1024;  // of HTTPDownloadFile()

  SingleDownload(HttpEngine& engine, MyXMLHttpRequest& http, Activity& activity, CancelToken cancel,
                 LocalFile::WriteCall write = ::write);

  // `path` is a path of this system whose folder exists. A half-written file is the caller's to
  // delete. Codes: Complete, Cancelled, Fatal when the address is not available (nothing is opened
  // then), or a run-time error.
  QCoro::Task<FileDownload> DownloadToFile(QString url, QString path);

  // Sends the requests for an address ahead of its turn. DownloadToFile() takes them over when it
  // comes for that address next, and drops them when it comes for another one.
  void Prepare(const QString& url);

  // Nothing in the program calls it; kept as the whole-body way, with no progress and no outcome.
  // Writes nothing when the headers contain "404 Not Found", or the answer is broken or too long.
  QCoro::Task<void> HTTPDownloadFile(QString url, QString path);

 private:
  struct Requests {
    QString url;
    QCoro::Task<QString> length;
    std::unique_ptr<HttpTransfer> transfer;
  };

  Requests Send(const QString& url);
  Requests TakePrepared(const QString& url);
  QCoro::Task<RowCode> CopyBody(HttpTransfer& transfer, LocalFile& file, qint64 length);

  HttpEngine& engine_;
  MyXMLHttpRequest& http_;
  Activity& activity_;
  CancelToken cancel_;
  LocalFile::WriteCall write_;
  std::optional<Requests> prepared_;
  QByteArray wholeBody_;  // of the last HTTPDownloadFile()
};

}  // namespace zentorin
