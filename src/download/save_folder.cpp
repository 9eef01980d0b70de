// SPDX-License-Identifier: MIT
#include "download/save_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "base/file_names.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr mode_t kNewFolderMode = 0777;

// 0 when `path` is a folder, else the system's error code.
int FolderError(const QString& path) {
  struct stat status = {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return errno;
  return S_ISDIR(status.st_mode) ? 0 : ENOTDIR;
}

QString NearestEntry(QString path) {
  while (path.size() > 1 && !QFileInfo::exists(path)) {
    path.truncate(std::max<qsizetype>(1, path.lastIndexOf(u'/')));
  }
  return path;
}

// Makes an absolute folder with its parents; links are followed. A path that is a file or a
// dangling link is an error.
Outcome MakeWithParents(const QString& path) {
  QStringList missing;
  QString folder = path;
  int error = FolderError(folder);
  while (error == ENOENT && folder.size() > 1) {
    missing.prepend(folder);
    folder = folder.left(std::max<qsizetype>(1, folder.lastIndexOf(u'/')));
    error = FolderError(folder);
  }
  // A file stands in the way: the path is there and cannot be accessed as a folder.
  if (error == ENOTDIR) return Outcome::Of(RunTimeError::PathAccess, folder);
  if (error != 0) return Outcome::OfErrno(error, folder);
  for (const QString& next : std::as_const(missing)) {
    if (::mkdir(QFile::encodeName(next).constData(), kNewFolderMode) == 0) continue;
    // What was not there a moment ago and is there now dangles.
    if (errno == EEXIST) return Outcome::Of(RunTimeError::PathAccess, next);
    return Outcome::OfErrno(errno, next);
  }
  return {};
}

// Opens a folder at or below another one, so that no link leads out of it on the way. 0, or the
// system's error.
int OpenBelow(const QString& top, const QString& path, Descriptor& folder) {
  constexpr int kFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  folder = Descriptor(top, kFlags);
  if (folder.Number() < 0) return errno;
  if (path == top) return 0;
  const QByteArray below = QFile::encodeName(path.mid(top.size() + 1));
  open_how how = {};
  how.flags = kFlags;
  how.resolve = RESOLVE_BENEATH;
  const long opened = ::syscall(SYS_openat2, folder.Number(), below.constData(), &how, sizeof(how));
  if (opened >= 0) {
    folder = Descriptor(static_cast<int>(opened));
    return 0;
  }
  // A system without that call; an absolute link, which was looked at before and stays inside.
  if (errno != ENOSYS && errno != EPERM && errno != EXDEV) return errno;
  folder = Descriptor(path, kFlags);
  return folder.Number() < 0 ? errno : 0;
}

}  // namespace

SaveFolder::SaveFolder(QString path, const QString& programFolder)
    : path_(std::move(path)),
      isProgramFolder_(QFileInfo(path_).canonicalFilePath() ==
                       QFileInfo(programFolder).canonicalFilePath()) {}

SaveFolder::Made SaveFolder::Make(const QString& subFolder) {
  if (lastSubFolder_ == subFolder && IsStillThere()) return last_;
  folder_ = Descriptor();
  Made made{.outcome = MakeWithParents(path_), .path = path_};
  if (made.outcome.Ok() && !subFolder.isEmpty()) {
    made.path += u'/' + QString(subFolder).replace(u'\\', u'/');
    made.outcome = MakeBelow(made.path, made.refused);
  }
  if (!made.outcome.Ok()) return made;
  const int error = OpenBelow(path_, made.path, folder_);
  if (error != 0) {
    folder_ = Descriptor();
    made.outcome = Outcome::OfErrno(error, made.path);
    made.refused = true;
    return made;
  }
  made.folder = folder_.Number();
  lastSubFolder_ = subFolder;
  last_ = made;
  return made;
}

Outcome SaveFolder::MakeBelow(const QString& path, bool& refused) const {
  // Behind a file that stands where a folder is needed nothing can be looked at but the file.
  const bool blocked = FolderError(path) == ENOTDIR;
  const Outcome allowed = Allows(blocked ? NearestEntry(path) : path);
  refused = !allowed.Ok();
  return refused ? allowed : MakeWithParents(path);
}

// Somebody else may have moved or deleted it since.
bool SaveFolder::IsStillThere() const {
  struct stat now = {};
  struct stat opened = {};
  return ::stat(QFile::encodeName(last_.path).constData(), &now) == 0 &&
         ::fstat(folder_.Number(), &opened) == 0 && now.st_ino == opened.st_ino &&
         now.st_dev == opened.st_dev;
}

Outcome SaveFolder::Allows(const QString& path) const {
  Outcome allowed = AllowsIn(path);
  if (!allowed.Ok()) return allowed;
  return StaysInside(path_, path) ? Outcome() : Outcome::Of(RunTimeError::PathAccess, path);
}

Outcome SaveFolder::AllowsIn(const QString& path) const {
  if (QFile::encodeName(path).size() >= PATH_MAX) {
    return Outcome::Of(RunTimeError::BadFileName, path);
  }
  return IsOwnFile(path) ? Outcome::Of(RunTimeError::PathAccess, path) : Outcome();
}

// Without a save folder files go to the program's folder. No page may replace what lies there.
bool SaveFolder::IsOwnFile(const QString& path) const {
  if (!isProgramFolder_) return false;
  const QFileInfo file(path);
  if (file.path() != path_) return false;
  const QString name = file.fileName();
  // A page may not bring it about either, nor the lock that goes with it.
  if (name.startsWith("choices.ini"_L1)) return true;
  if (!file.exists()) return false;
  return name == "Conf.txt"_L1 || name == "reglist.txt"_L1 || name == "log.txt"_L1 ||
         name.endsWith(".dat"_L1);
}

}  // namespace zentorin
