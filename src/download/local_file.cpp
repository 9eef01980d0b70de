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

QByteArray FolderOf(const QByteArray& name) {
  const qsizetype slash = name.lastIndexOf('/');
  return slash < 0 ? QByteArray(".") : name.left(std::max<qsizetype>(1, slash));
}

bool KnowsNoUnnamedFiles(int systemError) {
  return systemError == EOPNOTSUPP || systemError == EISDIR || systemError == EINVAL;
}

// Each false with errno set; EEXIST when something stands at the place.
bool GiveName(int file, int folder, const QByteArray& name) {
  const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(file);
  return ::linkat(AT_FDCWD, unnamed.constData(), folder, name.constData(), AT_SYMLINK_FOLLOW) == 0;
}

bool Rename(int folder, const QByteArray& from, const QByteArray& to) {
  if (::renameat2(folder, from.constData(), folder, to.constData(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that cannot promise not to replace.
  struct stat status = {};
  if (::fstatat(folder, to.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
    errno = EEXIST;
    return false;
  }
  return ::renameat(folder, from.constData(), folder, to.constData()) == 0;
}

Descriptor OpenAt(int folder, const QByteArray& name, int flags) {
  constexpr mode_t kNewFileMode = 0666;
  return Descriptor(::openat(folder, name.constData(),
                             flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | O_WRONLY, kNewFileMode));
}

}  // namespace

LocalFile::~LocalFile() {
  if (!hidden_.isEmpty()) ::unlinkat(folder_, hidden_.constData(), 0);
}

Outcome LocalFile::Open(const QString& path, int folder) {
  if (path.isEmpty() || path.contains(QChar(u'\0'))) {
    return Outcome::Of(RunTimeError::BadFileName, path);
  }
  folder_ = folder;
  name_ = QFile::encodeName(folder == AT_FDCWD ? path : path.mid(path.lastIndexOf(u'/') + 1));
  struct stat status = {};
  const bool isThere = ::fstatat(folder_, name_.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
  if (!isThere && errno != ENOENT) return Outcome::OfErrno(errno, path);
  isNew_ = !isThere;
  if (isNew_) {
    const int error = OpenNew();
    if (error == 0) return {};
    return IsFolderGone() ? Outcome::Of(RunTimeError::PathMissing, path)
                          : Outcome::OfErrno(error, path);
  }
  if (!S_ISREG(status.st_mode)) return Outcome::Of(RunTimeError::PathAccess, path);
  file_ = OpenAt(folder_, name_, O_NOFOLLOW);
  if (file_.Number() < 0) return Outcome::OfErrno(errno, path);
  return {};
}

// 0, or the system's error.
int LocalFile::OpenNew() {
  const QByteArray folder = FolderOf(name_);
  file_ = OpenAt(folder_, folder, O_TMPFILE);
  for (int attempt = 0; file_.Number() < 0; ++attempt) {
    constexpr int kAttempts = 10;
    constexpr int kBase = 36;
    const bool tryNamed = attempt == 0 ? KnowsNoUnnamedFiles(errno) : errno == EEXIST;
    if (!tryNamed || attempt == kAttempts) {
      hidden_.clear();
      return errno;
    }
    const quint32 number = QRandomGenerator::global()->generate();
    hidden_ = folder + "/.zentorin-" + QByteArray::number(number, kBase) + ".part";
    file_ = OpenAt(folder_, hidden_, O_CREAT | O_EXCL);
  }
  return 0;
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

// The system tells it in several ways.
bool LocalFile::IsFolderGone() const {
  struct stat folder = {};
  return ::fstat(folder_, &folder) == 0 && folder.st_nlink == 0;
}

RowCode LocalFile::WhyNoName() const {
  if (errno == EEXIST) return RowCode::SkipExisting;
  const RunTimeError error = RunTimeErrorFromErrno(errno);
  return IsFolderGone() ? RunTimeError::PathMissing : error;
}

// A write error that the system finds out only at the end takes a new file's name with it.
RowCode LocalFile::Keep() {
  // Nothing of a longer try that broke off stays behind the one that is whole.
  if (farthest_ > position_ && ::ftruncate(file_.Number(), position_) != 0) {
    return RunTimeErrorFromErrno(errno);
  }
  ApplyDate();
  struct stat status = {};
  bytes_ = isNew_ || ::fstat(file_.Number(), &status) != 0 ? position_ : status.st_size;
  if (isNew_ && hidden_.isEmpty() && !GiveName(file_.Number(), folder_, name_)) {
    return WhyNoName();
  }
  if (!file_.Close()) {
    const RunTimeError error = RunTimeErrorFromErrno(errno);
    if (isNew_ && hidden_.isEmpty()) ::unlinkat(folder_, name_.constData(), 0);
    return error;
  }
  if (hidden_.isEmpty()) return RowCode::Complete;
  if (!Rename(folder_, hidden_, name_)) return WhyNoName();
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
