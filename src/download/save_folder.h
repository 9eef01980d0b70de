// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The folder that the user chose to save into, as a path of this system, and the folders that a run
// makes below it. The folder itself may be a link, that is the user's choice; no link below it is
// followed out of it.
class SaveFolder {
 public:
  SaveFolder(QString path, const QString& programFolder);

  const QString& Path() const { return path_; }

  struct Made {
    int error = 0;         // 0, or a run-time error number
    bool refused = false;  // the error concerns this row alone: a name that cannot be, a link out
    QString path;          // the folder; with an error the one that could not be made
  };
  // Makes the folder `subFolder` ("\\" or "/" between its cleaned names; may be empty) with all
  // missing parents, parents first.
  Made Make(const QString& subFolder) const;

  // 0, or the error number that forbids writing to `path`: a link leads out, the name is too long,
  // or it is one of the program's own files.
  int Forbids(const QString& path) const;

 private:
  bool IsOwnFile(const QString& path) const;

  QString path_;
  bool isProgramFolder_;
};

}  // namespace zentorin
