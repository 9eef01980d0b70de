// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <cstddef>

#include <sys/types.h>

namespace zentorin {

// A regular file that is written from its start. An existing one is not truncated: a longer one
// keeps its tail. Links are never followed at the last step of the path, and whatever is no regular
// file is refused without waiting for it.
class LocalFile {
 public:
  // write(2), or a test's stand-in.
  using WriteCall = ssize_t (*)(int, const void*, size_t);

  explicit LocalFile(WriteCall write) : write_(write) {}
  LocalFile(const LocalFile&) = delete;
  LocalFile& operator=(const LocalFile&) = delete;
  ~LocalFile();

  // Each answers 0 or a run-time error number.
  int Open(const QString& path);
  int Write(QByteArrayView bytes);
  // Also tells of write errors that the system only finds out now.
  int Close();

 private:
  WriteCall write_;
  int handle_ = -1;
};

// Deletes a regular file; a link, a folder or anything else at that path is left alone.
void DeleteLocalFile(const QString& path);

}  // namespace zentorin
