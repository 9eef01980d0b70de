// SPDX-License-Identifier: MIT
#include "app/list_lock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentorin {
namespace {

constexpr mode_t kLockFileMode = 0600;
constexpr int kAttempts = 10;

enum class Locking { Held, Busy, NotOffered };

// True when the path still names the open file.
bool StillNamed(int descriptor, const QByteArray& path) {
  struct stat open = {};
  struct stat named = {};
  return ::fstat(descriptor, &open) == 0 && ::stat(path.constData(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Locks the file that the path names. The holder may remove or replace the file between open and
// lock; a lock on a file that the path no longer names keeps nobody off, so it is tried again.
Locking Lock(const QByteArray& path, int flags, int& descriptor) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const int opened = ::open(path.constData(), flags | O_CLOEXEC | O_NONBLOCK, kLockFileMode);
    if (opened < 0) return Locking::NotOffered;
    if (::flock(opened, LOCK_EX | LOCK_NB) != 0) {
      const bool busy = errno == EWOULDBLOCK;
      ::close(opened);
      return busy ? Locking::Busy : Locking::NotOffered;
    }
    if (StillNamed(opened, path)) {
      descriptor = opened;
      return Locking::Held;
    }
    ::close(opened);
  }
  return Locking::Busy;
}

void Close(int& descriptor) {
  if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

}  // namespace

ListLock::~ListLock() {
  Release();
}

bool ListLock::Acquire(const QString& listFile, const QString& programFolder) {
  Release();
  if (Lock(QFile::encodeName(listFile), O_RDONLY, listDescriptor_) == Locking::Busy) return false;

  const QFileInfo info(listFile);
  const QString name = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
  const QByteArray key = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex();
  nameFile_ = QFile::encodeName(programFolder) + "/." + key + ".lock";
  if (Lock(nameFile_, O_RDWR | O_CREAT, nameDescriptor_) == Locking::Busy) {
    Close(listDescriptor_);
    return false;
  }
  return true;
}

void ListLock::Release() {
  // Removed while the lock is still held, so that nobody else's file can be meant.
  if (nameDescriptor_ >= 0) ::unlink(nameFile_.constData());
  Close(nameDescriptor_);
  Close(listDescriptor_);
}

}  // namespace zentorin
