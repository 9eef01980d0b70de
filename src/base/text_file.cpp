// SPDX-License-Identifier: MIT
#include "base/text_file.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "base/descriptor.h"
#include "base/file_names.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

Outcome Failure(const QString& what, const QString& path, RunTimeError error,
                const QString& reason) {
  return Outcome::FailedWithNumber(
      error, u"ファイル「%1」を%2。%3"_s.arg(EscapeForDisplay(path), what, reason));
}

Outcome ReadFailure(const QString& path, RunTimeError error, const QString& reason = {}) {
  return Failure(u"読み込めません"_s, path, error,
                 reason.isEmpty() ? Outcome::Of(error).message : reason);
}

// Reads at most `size` bytes, fewer only at the end of the file; false with errno set.
bool ReadUpTo(const Descriptor& file, qint64 size, QByteArray& bytes) {
  constexpr qint64 kBlock = 1 << 20;
  while (bytes.size() < size) {
    const qsizetype had = bytes.size();
    const qint64 wanted = std::min(kBlock, size - had);
    bytes.resize(had + wanted);
    const ssize_t got = read(file.Number(), bytes.data() + had, static_cast<size_t>(wanted));
    bytes.resize(had + std::max<ssize_t>(got, 0));
    if (got == 0) return true;
    if (got < 0 && errno != EINTR) return false;
  }
  return true;
}

// Whatever stands at the place must be a regular file: a folder, a device or a pipe is refused.
RunTimeError CheckTarget(const QString& path) {
  if (path.contains(QChar(QChar::Null))) return RunTimeError::BadFileName;
  struct stat status{};
  if (stat(QFile::encodeName(path).constData(), &status) != 0) {
    return errno == ENOENT ? RunTimeError::None : RunTimeErrorFromErrno(errno);
  }
  return S_ISREG(status.st_mode) ? RunTimeError::None : RunTimeError::PathAccess;
}

// Called right after a step of `file` failed; errno was 0 before the step.
RunTimeError ErrorOf(const QSaveFile& file, int systemError) {
  if (systemError != 0) return RunTimeErrorFromErrno(systemError);
  switch (file.error()) {
    case QFileDevice::PermissionsError:
      return RunTimeError::PermissionDenied;
    case QFileDevice::ResourceError:
      return RunTimeError::DiskFull;
    case QFileDevice::OpenError:
    case QFileDevice::RenameError:
      return RunTimeError::PathAccess;
    case QFileDevice::ReadError:
    case QFileDevice::WriteError:
      return RunTimeError::InputOutput;
    default:
      return RunTimeError::Other;
  }
}

}  // namespace

Outcome WriteFailure(const QString& path, RunTimeError error) {
  return Failure(u"書き込めません"_s, path, error, Outcome::Of(error).message);
}

Outcome ReadWholeFile(const QString& path, qint64 maxBytes, QByteArray& bytes) {
  if (path.contains(QChar(QChar::Null))) return ReadFailure(path, RunTimeError::BadFileName);
  const Descriptor file(path, O_RDONLY);
  if (file.Number() < 0) return ReadFailure(path, RunTimeErrorFromErrno(errno));
  struct stat status{};
  if (fstat(file.Number(), &status) != 0) return ReadFailure(path, RunTimeErrorFromErrno(errno));
  if (!S_ISREG(status.st_mode)) {
    return ReadFailure(path, RunTimeError::PathAccess, u"通常のファイルではありません"_s);
  }
  QByteArray content;
  // One byte more than allowed tells a file that is too long, whatever its status claims.
  if (status.st_size <= maxBytes && !ReadUpTo(file, maxBytes + 1, content)) {
    return ReadFailure(path, RunTimeErrorFromErrno(errno));
  }
  if (status.st_size > maxBytes || content.size() > maxBytes) {
    return ReadFailure(path, RunTimeError::Other,
                       u"ファイルが大きすぎます。上限は %1 バイトです"_s.arg(maxBytes));
  }
  bytes = content;
  return {};
}

Outcome WriteWholeFile(const QString& path, const QByteArray& bytes) {
  if (const RunTimeError error = CheckTarget(path); error != RunTimeError::None) {
    return WriteFailure(path, error);
  }
  QSaveFile file(path);
  errno = 0;
  if (!file.open(QIODevice::WriteOnly)) return WriteFailure(path, ErrorOf(file, errno));
  errno = 0;
  if (file.write(bytes) != bytes.size() || !file.flush()) {
    return WriteFailure(path, ErrorOf(file, errno));
  }
  errno = 0;
  if (!file.commit()) return WriteFailure(path, ErrorOf(file, errno));
  return {};
}

}  // namespace zentorin
