// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class Drives;

// The folders that stand behind "<DESKTOP>", "<WINDOWS>", "<SYSTEM>", "<PROGRAM_FILES>" and
// "<OFFICE>". All but the desktop are folders of drive C, so they lie where `Drives` puts that
// drive: a user who has programs of that kind links their drive there, for others they are just not
// there.
class FolderPlaceholders {
 public:
  // `drives` outlives the object.
  explicit FolderPlaceholders(const Drives& drives) : drives_(drives) {}

  // The folder of a place-holder, in the program's form; empty for an unknown one and for an Office
  // folder that is not there.
  QString Folder(const QString& placeholder) const;

  // Replaces the place-holder in a path ("<.*>": from the first "<" to the last ">") by its folder.
  // A path without one, or with an unknown one, comes back unchanged.
  QString Expand(const QString& path) const;

  // The reverse: a path that lies in one of the folders, with the place-holder in the folder's
  // stead (that of the longest folder; case is ignored). Others come back unchanged.
  QString Collapse(const QString& path) const;

  // Where an expanded path lies on this system; empty when its place-holder has no folder.
  QString SystemPath(const QString& path) const;

 private:
  QString OfficeFolder() const;

  const Drives& drives_;
};

}  // namespace zentorin
