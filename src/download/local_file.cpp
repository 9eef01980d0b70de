// SPDX-License-Identifier: MIT
#include "download/local_file.h"

#include <QFile>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentorin {
Outcome LocalFile::Open(const QString& path) {
  if (path.isEmpty() || path.contains(QChar(u'\0'))) {
    return Outcome::Of(RunTimeError::BadFileName, path);
  }
  Descriptor file(path, O_CREAT | O_WRONLY | O_NOFOLLOW);
  if (file.Number() < 0) return Outcome::OfErrno(errno, path);
  struct stat status = {};
  if (::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return Outcome::Of(RunTimeError::PathAccess, path);
  }
  file_ = std::move(file);
  return {};
}

Outcome LocalFile::Write(QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t written = write_(file_.Number(), bytes.data(), static_cast<size_t>(bytes.size()));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return Outcome::OfErrno(errno);
    if (written == 0) return Outcome::Of(RunTimeError::InputOutput);
    bytes = bytes.sliced(written);
  }
  return {};
}

Outcome LocalFile::Close() {
  return file_.Close() ? Outcome() : Outcome::OfErrno(errno);
}

void DeleteLocalFile(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  struct stat status = {};
  if (::lstat(name.constData(), &status) == 0 && S_ISREG(status.st_mode)) {
    ::unlink(name.constData());
  }
}

}  // namespace zentorin
