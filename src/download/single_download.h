// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include <QCoro/QCoroTask>
#include <unistd.h>

#include "download/local_file.h"

namespace zentorin {

class HttpEngine;
class HttpTransfer;
class MyXMLHttpRequest;
class RunState;

// Receives the progress of one file.
class DownloadProgress {
 public:
  DownloadProgress() = default;
  DownloadProgress(const DownloadProgress&) = delete;
  DownloadProgress& operator=(const DownloadProgress&) = delete;
  virtual ~DownloadProgress() = default;

  virtual void SetCaption(const QString& fraction) = 0;  // "0.000"
  virtual void SetBytes(qint64 written) = 0;
};

// Fetches one address into one file. All references must outlive it.
class SingleDownload {
 public:
  // Longest body that HTTPDownloadFile() takes.
  static constexpr qint64 kMaxWholeBodyBytes = 64LL * 1024 * 1024;

  // `write`: what puts the bytes on disk; tests bring their own.
  SingleDownload(HttpEngine& engine, MyXMLHttpRequest& http, RunState& state,
                 LocalFile::WriteCall write = ::write);

  // `path` is a path of this system whose folder exists. An existing file is written over from its
  // start and never truncated: a longer one keeps its tail. A file that a cancel or an error leaves
  // half-written is the caller's to delete. `progress` may be null. Result: 0 complete, 1
  // cancelled, -1 not available (nothing is opened then), else a run-time error number.
  QCoro::Task<int> DownloadToFile(QString url, QString path, DownloadProgress* progress);

  // Sends the requests for an address ahead of its turn, so that its answer is on the way while the
  // file before it is written. DownloadToFile() takes them over when it comes for that address
  // next, and drops them when it comes for another one.
  void Prepare(const QString& url);

  // True when the last DownloadToFile() was refused the file: it is a link, a folder, not
  // permitted. Whatever lies at that path is none of the download's making.
  bool FileRefused() const { return fileRefused_; }

  // A second, whole-body way: no progress, no cancel, no error result (always 0). Writes nothing
  // when the answer's headers contain "404 Not Found", when no whole answer came or when it is
  // longer than kMaxWholeBodyBytes.
  QCoro::Task<int> HTTPDownloadFile(QString url, QString path);

 private:
  // The two requests of one file, under way.
  struct Requests {
    QString url;
    QCoro::Task<QString> length;
    std::unique_ptr<HttpTransfer> transfer;
  };

  Requests Send(const QString& url);
  Requests TakePrepared(const QString& url);
  QCoro::Task<int> CopyBody(HttpTransfer& transfer, LocalFile& file, double expected,
                            DownloadProgress* progress);

  HttpEngine& engine_;
  MyXMLHttpRequest& http_;
  RunState& state_;
  LocalFile::WriteCall write_;
  std::optional<Requests> prepared_;
  bool fileRefused_ = false;
  QByteArray wholeBody_;  // of the last HTTPDownloadFile()
};

}  // namespace zentorin
