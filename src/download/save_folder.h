// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <fcntl.h>

#include "base/descriptor.h"
#include "base/outcome.h"

namespace zentorin {

// The folder that the user chose, and those that a run makes below it. The folder itself may be a
// link, that is the user's choice; no link below it is followed out of it.
class SaveFolder {
 public:
  SaveFolder(QString path, const QString& programFolder);

  const QString& Path() const { return path_; }  // of this system

  struct Made {
    Outcome outcome;       // its subject is the folder that could not be made
    bool refused = false;  // this row alone is at fault: a name that cannot be, a link out
    QString path;
    int folder = AT_FDCWD;  // open as long as no other one is made
  };
  // With missing parents. `subFolder`: cleaned names with "\\" or "/" between; may be empty. The
  // folder made last is only looked at again.
  Made Make(const QString& subFolder);

  // Refuses a link that leads out, a name that is too long, and the program's own files.
  Outcome Allows(const QString& path) const;
  // The same of a file in a folder that was made, where no link is opened.
  Outcome AllowsIn(const QString& path) const;

 private:
  bool IsOwnFile(const QString& path) const;
  Outcome MakeBelow(const QString& path, bool& refused) const;
  bool IsStillThere() const;

  QString path_;
  bool isProgramFolder_;
  Made last_;
  QString lastSubFolder_;
  Descriptor folder_;  // of last_; none is open when that failed
};

}  // namespace zentorin
