// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QDateTime>
#include <QString>
#include <cstddef>
#include <optional>

#include <fcntl.h>
#include <sys/types.h>

#include "base/descriptor.h"
#include "download/row_code.h"

namespace zentorin {

// The regular file that a download goes into. A new one appears under its name only when it is
// whole: until then it has no name, or a hidden one beside its place where the file system knows no
// unnamed files. One that is there is written over in place and not truncated: a longer one keeps
// its tail. No link is followed at the last step, nothing but a regular file is opened.
class LocalFile {
 public:
  using WriteCall = ssize_t (*)(int, const void*, size_t);  // write(2), or a test's

  explicit LocalFile(WriteCall write) : write_(write) {}
  LocalFile(const LocalFile&) = delete;
  LocalFile& operator=(const LocalFile&) = delete;
  ~LocalFile();  // a new file that was not kept is gone

  // `folder`: an open descriptor of the folder that `path` lies in, or AT_FDCWD.
  Outcome Open(const QString& path, int folder = AT_FDCWD);
  Outcome Write(QByteArrayView bytes);
  Outcome StartOver();  // the next bytes are the first ones again
  // The file gets it instead of the time of writing.
  void SetDate(const std::optional<QDateTime>& date) { date_ = date; }
  // The file is whole. SkipExisting when another one has come to its place meanwhile.
  RowCode Keep();

  bool IsOpen() const { return file_.Number() >= 0; }
  qint64 Bytes() const { return bytes_; }  // of a file that was kept
  bool HasChangedOldFile() const { return !isNew_ && hasWritten_; }

 private:
  int OpenNew();
  void ApplyDate() const;
  bool IsFolderGone() const;
  RowCode WhyNoName() const;  // by errno

  WriteCall write_;
  int folder_ = AT_FDCWD;
  QByteArray name_;    // below the folder
  QByteArray hidden_;  // the name of a new file that needs one
  Descriptor file_;
  bool isNew_ = false;
  bool hasWritten_ = false;
  std::optional<QDateTime> date_;
  qint64 position_ = 0;
  qint64 farthest_ = 0;  // position of all tries
  qint64 bytes_ = 0;
};

void DeleteLocalFile(const QString& path);  // leaves anything but a regular file alone

}  // namespace zentorin
