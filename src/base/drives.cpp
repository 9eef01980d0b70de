// SPDX-License-Identifier: MIT
#include "base/drives.h"

#include <QStringList>
namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

const QChar kSlash(u'/');

QString WithSlashes(QString path) {
  return path.replace(u'\\', kSlash);
}

bool IsDriveLetter(QChar c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool BeginsWithDrive(const QString& path) {
  return path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == u':';
}

// Exactly two slashes; three or more are a system path written carelessly.
bool BeginsWithServer(const QString& path) {
  return path.size() > 2 && path[0] == kSlash && path[1] == kSlash && path[2] != kSlash;
}

// Appends the segments of `path` to `root`, which has no trailing "/". "." and empty segments are
// dropped; ".." takes one segment away, but never one of the first `floor`.
QString Below(const QString& root, const QString& path, qsizetype floor = 0) {
  QStringList kept;
  for (const QString& segment : path.split(kSlash, Qt::SkipEmptyParts)) {
    if (segment == u"."_s) continue;
    if (segment != u".."_s) {
      kept.append(segment);
    } else if (kept.size() > floor) {
      kept.removeLast();
    }
  }
  return kept.isEmpty() ? root : root + kSlash + kept.join(kSlash);
}

QString NormalSystemPath(const QString& path) {
  const QString result = Below({}, path);
  return result.isEmpty() ? QString(kSlash) : result;
}

bool IsRoot(const QString& path) {
  return path.size() == 1 || (path.size() == 3 && BeginsWithDrive(path));
}

}  // namespace

Drives::Drives(const QString& programFolder) : programFolder_(NormalSystemPath(programFolder)) {}

QString Drives::ToSystemPath(const QString& path) const {
  const QString text = WithSlashes(path);
  const QString drives = NormalSystemPath(programFolder_ + u"/drives"_s);
  if (BeginsWithDrive(text)) return Below(drives + kSlash + text[0].toLower(), text.sliced(2));
  // Server and share are the drive: ".." leaves both alone.
  if (BeginsWithServer(text)) return Below(drives + u"/unc"_s, text, 2);
  if (text.startsWith(kSlash)) return NormalSystemPath(text);
  return NormalSystemPath(programFolder_ + kSlash + text);
}

QString Drives::ToStoredPath(const QString& systemPath) const {
  QString path = systemPath;
  const bool trailing = path.endsWith(kSlash) || path.endsWith(u'\\');
  if (trailing && !IsRoot(path)) path.chop(1);
  if (!path.startsWith(kSlash) || BeginsWithServer(path)) return path;
  QString normal = NormalSystemPath(path);
  const QString parent = IsRoot(programFolder_) ? programFolder_ : programFolder_ + kSlash;
  if (!normal.startsWith(parent) || normal == parent) return path;
  const QString relative = normal.sliced(parent.size());
  // A folder whose name looks like a drive can only be told from one by its full path.
  if (BeginsWithDrive(relative)) return normal;
  return QString(relative).replace(kSlash, u'\\');
}

}  // namespace zentorin
