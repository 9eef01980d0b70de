// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace zentorin {

// Most important first.
struct XdgFolders {
  QStringList config;    // $XDG_CONFIG_HOME, then $XDG_CONFIG_DIRS
  QStringList data;      // $XDG_DATA_HOME, then $XDG_DATA_DIRS
  QStringList desktops;  // $XDG_CURRENT_DESKTOP, lower-cased
  QStringList commands;  // $PATH

  static XdgFolders FromEnvironment();  // relative ones count as not given

  // An absolute path or a bare name in `commands`. Empty when it is no executable file.
  QString FindCommand(const QString& command) const;
};

}  // namespace zentorin
