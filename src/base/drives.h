// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Turns the program's local paths, which keep their "\\", into paths of this system at the moment
// of use. The only place that knows how.
class Drives {
 public:
  // `programFolder` is absolute, in this system's form.
  explicit Drives(QString programFolder);

  const QString& ProgramFolder() const { return programFolder_; }

  // "\\" becomes "/"; a path that begins with a single "/" is already one; "X:\\…" lies in
  // drives/x/ of the program's folder, "\\\\server\\share\\…" in drives/unc/server/share/; any
  // other path is relative to the program's folder. "." and ".." segments are resolved; a drive
  // path never climbs above its drive. The result is absolute, without a trailing "/".
  QString ToSystemPath(const QString& path) const;

  // The stored form of a system path: relative to the program's folder when it lies below it, with
  // one trailing "\\" or "/" removed unless the path is a root.
  QString ToStoredPath(const QString& systemPath) const;

 private:
  QString programFolder_;
};

}  // namespace zentorin
