// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace zentorin {

// The folders in which a desktop keeps its settings and programs, most important first in each
// list, and the folders that commands are found in.
struct XdgFolders {
  QStringList config;    // $XDG_CONFIG_HOME, then $XDG_CONFIG_DIRS
  QStringList data;      // $XDG_DATA_HOME, then $XDG_DATA_DIRS
  QStringList desktops;  // $XDG_CURRENT_DESKTOP, lower-cased
  QStringList commands;  // $PATH

  // Relative folders count as not given.
  static XdgFolders FromEnvironment();

  // The full path of a command: an absolute path that is an executable file, or a bare name found
  // in `commands`. Empty otherwise, also for a relative path.
  QString FindCommand(const QString& command) const;
};

}  // namespace zentorin
