// SPDX-License-Identifier: MIT
#include "download/local_file.h"

#include <QFile>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/run_time_error.h"

namespace zentorin {
namespace {

constexpr mode_t kNewFileMode = 0666;

int ErrorNumber(int systemError) {
  return static_cast<int>(RunTimeErrorFromErrno(systemError));
}

}  // namespace

LocalFile::~LocalFile() {
  Close();
}

int LocalFile::Open(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  if (path.isEmpty() || path.contains(QChar(u'\0'))) {
    return static_cast<int>(RunTimeError::BadFileName);
  }
  const int handle = ::open(name.constData(),
                            O_CREAT | O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, kNewFileMode);
  if (handle < 0) return ErrorNumber(errno);
  struct stat status = {};
  if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode)) {
    ::close(handle);
    return static_cast<int>(RunTimeError::PathAccess);
  }
  handle_ = handle;
  return 0;
}

int LocalFile::Write(QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t written = write_(handle_, bytes.data(), static_cast<size_t>(bytes.size()));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return ErrorNumber(errno);
    if (written == 0) return static_cast<int>(RunTimeError::InputOutput);
    bytes = bytes.sliced(written);
  }
  return 0;
}

int LocalFile::Close() {
  if (handle_ < 0) return 0;
  const int handle = handle_;
  handle_ = -1;
  const int closed = ::close(handle);
  return closed == 0 || errno == EINTR ? 0 : ErrorNumber(errno);
}

void DeleteLocalFile(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  struct stat status = {};
  if (::lstat(name.constData(), &status) == 0 && S_ISREG(status.st_mode)) {
    ::unlink(name.constData());
  }
}

}  // namespace zentorin
