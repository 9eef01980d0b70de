// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Turns the program's local paths, which keep their "\\", into paths of this system at the moment
// of use. The only place that knows how.
class Drives {
 public:
  // `programFolder` is absolute, in this system's form.
  explicit Drives(const QString& programFolder);

  const QString& ProgramFolder() const { return programFolder_; }

  // "\\" becomes "/"; a path that begins with a single "/" is already one; "X:\\…" lies in
  // drives/x/ of the program's folder, "\\\\server\\share\\…" in drives/unc/server/share/; any
  // other path is relative to the program's folder. "X:name" and "X:" count from the drive's root:
  // there is no current folder of a drive here. "." and ".." segments are resolved by their text
  // alone; a drive path never climbs above its drive (a server's share is a drive), a relative path
  // may climb out of the program's folder. The result is absolute, without a trailing "/".
  QString ToSystemPath(const QString& path) const;

  // The stored form of a system path: relative to the program's folder when it lies below it (then
  // with "\\" between its folders), with one trailing "\\" or "/" removed unless the path is a
  // root. Paths that already have the program's form ("C:\\…") lose only that trailing separator.
  QString ToStoredPath(const QString& systemPath) const;

 private:
  QString programFolder_;
};

}  // namespace zentorin
