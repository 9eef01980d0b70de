// SPDX-License-Identifier: MIT
#include "download/save_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include <sys/stat.h>

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

}  // namespace

SaveFolder::SaveFolder(QString path, const QString& programFolder)
    : path_(std::move(path)),
      isProgramFolder_(QFileInfo(path_).canonicalFilePath() ==
                       QFileInfo(programFolder).canonicalFilePath()) {}

SaveFolder::Made SaveFolder::Make(const QString& subFolder) const {
  Made made{.outcome = MakeWithParents(path_), .path = path_};
  if (!made.outcome.Ok() || subFolder.isEmpty()) return made;
  made.path += u'/' + QString(subFolder).replace(u'\\', u'/');
  // Behind a file that stands where a folder is needed nothing can be looked at but the file.
  const bool blocked = FolderError(made.path) == ENOTDIR;
  made.outcome = Allows(blocked ? NearestEntry(made.path) : made.path);
  made.refused = !made.outcome.Ok();
  if (!made.refused) made.outcome = MakeWithParents(made.path);
  return made;
}

Outcome SaveFolder::Allows(const QString& path) const {
  if (QFile::encodeName(path).size() >= PATH_MAX) {
    return Outcome::Of(RunTimeError::BadFileName, path);
  }
  if (IsOwnFile(path) || !StaysInside(path_, path)) {
    return Outcome::Of(RunTimeError::PathAccess, path);
  }
  return {};
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
