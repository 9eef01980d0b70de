// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class Drives;

// The folders behind "<DESKTOP>", "<WINDOWS>" and the like: all but the desktop on drive C, so
// there only for a user who linked a drive.
class FolderPlaceholders {
 public:
  explicit FolderPlaceholders(const Drives& drives) : drives_(drives) {}

  // In the program's form; empty for an unknown one and for an Office folder that is not there.
  QString Folder(const QString& placeholder) const;

  // From the first "<" to the last ">"; a path without a known one comes back unchanged.
  QString Expand(const QString& path) const;

  // The reverse: a path that lies in one of the folders, case ignored, gets the place-holder of the
  // longest. Nothing in the program calls it; kept to complete Expand().
  QString Collapse(const QString& path) const;

  QString SystemPath(const QString& path) const;

 private:
  QString OfficeFolder() const;

  const Drives& drives_;
};

}  // namespace zentorin
