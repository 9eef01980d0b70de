// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The only place that knows where the program's local paths, which keep their "\\", lie.
class Drives {
 public:
  explicit Drives(const QString& programFolder);

  const QString& ProgramFolder() const { return programFolder_; }

  // "\\" becomes "/"; a path that begins with a single "/" is already one; "X:\\…" lies in
  // drives/x/ of the program's folder, "\\\\server\\share\\…" in drives/unc/server/share/, others
  // in the folder itself. ".." never climbs above a drive or a share; a relative path may climb.
  // The result is absolute, without a trailing "/".
  QString ToSystemPath(const QString& path) const;

  // Relative to the program's folder when it lies below it, then with "\\". One trailing separator
  // goes unless the path is a root. The program's own form ("C:\\…") stays but for that.
  QString ToStoredPath(const QString& systemPath) const;

 private:
  QString programFolder_;
};

}  // namespace zentorin
