// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The file of one recording. What stands at the row's path is replaced only when the recording is
// kept: one that fails costs no earlier one, and nothing of it stays behind.
class RecordingFile {
 public:
  // Asks for the free bytes of the disk under a folder, -1 when they are not known; or a test's
  // stand-in.
  using FreeBytesCall = qint64 (*)(const QString& folder);
  static qint64 FreeBytes(const QString& folder);

  // `path`: where the row's file belongs.
  explicit RecordingFile(QString path, FreeBytesCall freeBytes = &FreeBytes)
      : path_(std::move(path)), freeBytes_(freeBytes) {}
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;
  // To be destroyed after the tool has ended: its recording is deleted unless it was kept.
  ~RecordingFile();

  // One of these goes before the tool's start; each answers 0 or a run-time error number.
  // For a tool that writes where it is told to: a new, empty file beside the row's.
  int MakePart();
  // For a tool that writes to the row's path anyway: moves what stands there out of its way.
  int PutOldAside();

  const QString& Path() const { return path_; }
  // What the tool writes.
  const QString& Written() const { return written_; }
  qint64 Bytes() const;
  // No room is left for what the tool writes. Tools do not tell: they drop what finds no room.
  bool DiskIsFull() const;

  // The recording takes the row's path. 0, or a run-time error number.
  int Keep();

 private:
  QString path_;
  FreeBytesCall freeBytes_;
  QString written_;  // empty before the start and once it is kept
  QString old_;      // where the earlier file lies meanwhile; empty for none
};

}  // namespace zentorin
