// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <cstddef>

#include <sys/types.h>

#include "base/descriptor.h"
#include "base/outcome.h"

namespace zentorin {

// A regular file that is written from its start. An existing one is not truncated: a longer one
// keeps its tail. Links are never followed at the last step of the path, and whatever is no regular
// file is refused without waiting for it.
class LocalFile {
 public:
  using WriteCall = ssize_t (*)(int, const void*, size_t);  // write(2), or a test's

  explicit LocalFile(WriteCall write) : write_(write) {}

  Outcome Open(const QString& path);
  Outcome Write(QByteArrayView bytes);
  Outcome Close();  // also tells of write errors that the system only finds out now

 private:
  WriteCall write_;
  Descriptor file_;
};

void DeleteLocalFile(const QString& path);  // leaves anything but a regular file alone

}  // namespace zentorin
