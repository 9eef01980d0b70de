// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include <QCoro/QCoroTask>

namespace zentorin {

class HttpEngine;
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
  SingleDownload(HttpEngine& engine, MyXMLHttpRequest& http, RunState& state);

  // `path` is a path of this system whose folder exists. An existing file is written over from its
  // start and never truncated: a longer one keeps its tail. A file that a cancel or an error leaves
  // half-written is the caller's to delete. `progress` may be null. Result: 0 complete, 1
  // cancelled, -1 not available (nothing is opened then), else a run-time error number.
  QCoro::Task<int> DownloadToFile(QString url, QString path, DownloadProgress* progress);

  // A second, whole-body way: no progress, no cancel, no error result (always 0). Writes nothing
  // when the answer's headers contain "404 Not Found".
  QCoro::Task<int> HTTPDownloadFile(QString url, QString path);

 private:
  HttpEngine& engine_;
  MyXMLHttpRequest& http_;
  RunState& state_;
  QByteArray wholeBody_;  // of the last HTTPDownloadFile()
};

}  // namespace zentorin
