// SPDX-License-Identifier: MIT
#pragma once

#include "launch/xdg_folders.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {

// A desktop's folders in a temporary place: config/, config-system/, data/, data-system/ and bin/.
class XdgTree : public TempDir {
 public:
  XdgFolders Folders() const {
    XdgFolders folders;
    folders.config = {Path("config"), Path("config-system")};
    folders.data = {Path("data"), Path("data-system")};
    folders.desktops = {"gnome"};
    folders.commands = {Path("bin")};
    return folders;
  }
  // A shell script in bin/; answers its path.
  QString AddCommand(const QString& name, const QByteArray& script = "exit 0") const {
    const QString path = Write("bin/" + name, "#!/bin/sh\n" + script + "\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
  }
  // An entry of the user's; `lines` come after its type.
  void AddEntry(const QString& name, const QByteArray& lines) const {
    Write("data/applications/" + name + ".desktop",
          "[Desktop Entry]\nType=Application\n" + lines + '\n');
  }
  // A command and the entry in data-system/ that starts it with `codes`; `lines` are further lines
  // of the entry.
  void AddProgram(const QString& name, const QByteArray& codes = "%f",
                  const QByteArray& lines = {}) const {
    AddCommand(name);
    const QByteArray word = name.toUtf8();
    Write("data-system/applications/" + name + ".desktop",
          "[Desktop Entry]\nType=Application\nName=" + word + "\nExec=" + word + ' ' + codes +
              '\n' + lines + '\n');
  }
};

}  // namespace zentorin::test
