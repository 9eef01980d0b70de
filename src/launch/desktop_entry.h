// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

struct DesktopEntry {
  QString id;         // "org.example.Player.desktop"
  QString path;       // the entry's own file
  QString name;       // Name
  QString localName;  // Name[ja_JP] or Name[ja]; `name` where neither is there
  QString exec;       // Exec with the escapes of a text undone, its quoting still in place
  QString tryExec;    // a command without which the program counts as not installed
  QString icon;
  QString folder;         // Path: the folder that the program wants to work in
  QStringList types;      // MimeType
  bool hidden = false;    // deleted by the user: as good as not there
  bool terminal = false;  // wants to run in a terminal

  // Nothing for a file that is no application's. Strings from outside: empty, odd or long.
  static std::optional<DesktopEntry> Read(const QString& path, const QString& id);
};

}  // namespace zentorin
