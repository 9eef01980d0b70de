// SPDX-License-Identifier: MIT
#include "download/local_file.h"

#include <QFile>
#include <QRandomGenerator>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentorin {

namespace {

QByteArray FolderOf(const QByteArray& path) {
  return path.left(std::max<qsizetype>(1, path.lastIndexOf('/')));
}

bool KnowsNoUnnamedFiles(int systemError) {
  return systemError == EOPNOTSUPP || systemError == EISDIR || systemError == EINVAL;
}

// Each false with errno set; EEXIST when something stands at the place.
bool GiveName(int file, const QByteArray& path) {
  const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(file);
  return ::linkat(AT_FDCWD, unnamed.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) ==
         0;
}

bool Rename(const QByteArray& from, const QByteArray& to) {
  if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that cannot promise not to replace.
  struct stat status = {};
  if (::lstat(to.constData(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.constData(), to.constData()) == 0;
}

}  // namespace

LocalFile::~LocalFile() {
  if (!hidden_.isEmpty()) ::unlink(hidden_.constData());
}

Outcome LocalFile::Open(const QString& path) {
  if (path.isEmpty() || path.contains(QChar(u'\0'))) {
    return Outcome::Of(RunTimeError::BadFileName, path);
  }
  path_ = QFile::encodeName(path);
  struct stat status = {};
  const bool isThere = ::lstat(path_.constData(), &status) == 0;
  if (!isThere && errno != ENOENT) return Outcome::OfErrno(errno, path);
  isNew_ = !isThere;
  if (isNew_) return OpenNew();
  if (!S_ISREG(status.st_mode)) return Outcome::Of(RunTimeError::PathAccess, path);
  file_ = Descriptor(path, O_WRONLY | O_NOFOLLOW);
  if (file_.Number() < 0) return Outcome::OfErrno(errno, path);
  return {};
}

Outcome LocalFile::OpenNew() {
  const QByteArray folder = FolderOf(path_);
  file_ = Descriptor(QFile::decodeName(folder), O_TMPFILE | O_WRONLY);
  for (int attempt = 0; file_.Number() < 0; ++attempt) {
    constexpr int kAttempts = 10;
    constexpr int kBase = 36;
    const bool tryNamed = attempt == 0 ? KnowsNoUnnamedFiles(errno) : errno == EEXIST;
    if (!tryNamed || attempt == kAttempts) {
      hidden_.clear();
      return Outcome::OfErrno(errno, QFile::decodeName(path_));
    }
    const quint32 number = QRandomGenerator::global()->generate();
    hidden_ = folder + "/.zentorin-" + QByteArray::number(number, kBase) + ".part";
    file_ = Descriptor(QFile::decodeName(hidden_), O_CREAT | O_EXCL | O_WRONLY);
  }
  return {};
}

Outcome LocalFile::Write(QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t written = write_(file_.Number(), bytes.data(), static_cast<size_t>(bytes.size()));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return Outcome::OfErrno(errno);
    if (written == 0) return Outcome::Of(RunTimeError::InputOutput);
    hasWritten_ = true;
    position_ += written;
    farthest_ = std::max(farthest_, position_);
    bytes = bytes.sliced(written);
  }
  return {};
}

Outcome LocalFile::StartOver() {
  position_ = 0;
  return ::lseek(file_.Number(), 0, SEEK_SET) == 0 ? Outcome() : Outcome::OfErrno(errno);
}

void LocalFile::ApplyDate() const {
  if (!date_) return;
  const timespec modified = {.tv_sec = date_->toSecsSinceEpoch(), .tv_nsec = 0};
  const std::array<timespec, 2> times = {{{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, modified}};
  ::futimens(file_.Number(), times.data());
}

// A write error that the system finds out only at the end takes a new file's name with it.
RowCode LocalFile::Keep() {
  // Nothing of a longer try that broke off stays behind the one that is whole.
  if (farthest_ > position_ && ::ftruncate(file_.Number(), position_) != 0) {
    return RunTimeErrorFromErrno(errno);
  }
  ApplyDate();
  if (isNew_ && hidden_.isEmpty() && !GiveName(file_.Number(), path_)) {
    return errno == EEXIST ? RowCode(RowCode::SkipExisting) : RunTimeErrorFromErrno(errno);
  }
  if (!file_.Close()) {
    const RunTimeError error = RunTimeErrorFromErrno(errno);
    if (isNew_ && hidden_.isEmpty()) ::unlink(path_.constData());
    return error;
  }
  if (hidden_.isEmpty()) return RowCode::Complete;
  if (!Rename(hidden_, path_)) {
    return errno == EEXIST ? RowCode(RowCode::SkipExisting) : RunTimeErrorFromErrno(errno);
  }
  hidden_.clear();
  return RowCode::Complete;
}

void DeleteLocalFile(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  struct stat status = {};
  if (::lstat(name.constData(), &status) == 0 && S_ISREG(status.st_mode)) {
    ::unlink(name.constData());
  }
}

}  // namespace zentorin
