// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/outcome.h"

namespace zentorin {

// The file of one recording. What stands at the row's path is replaced only when the recording is
// kept: one that fails costs no earlier one, and nothing of it stays behind.
class RecordingFile {
 public:
  using FreeBytesCall = qint64 (*)(const QString& folder);  // -1: not known
  static qint64 FreeBytes(const QString& folder);

  explicit RecordingFile(QString path, FreeBytesCall freeBytes = &FreeBytes)
      : path_(std::move(path)), freeBytes_(freeBytes) {}
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;
  // To be destroyed after the tool has ended: its recording is deleted unless it was kept.
  ~RecordingFile();

  // One of these goes before the tool's start.
  Outcome MakePart();     // a new file beside the row's, for a tool that writes where it is told
  Outcome PutOldAside();  // for a tool that writes to the row's path anyway

  const QString& Path() const { return path_; }
  const QString& Written() const { return written_; }  // by the tool
  qint64 Bytes() const;
  bool DiskIsFull() const;  // tools do not tell: they drop what finds no room

  Outcome Keep();  // the recording takes the row's path

 private:
  QString path_;  // where the row's file belongs
  FreeBytesCall freeBytes_;
  QString written_;  // empty before the start and once it is kept
  QString old_;      // where the earlier file lies meanwhile; empty for none
};

}  // namespace zentorin
