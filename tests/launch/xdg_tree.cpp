// SPDX-License-Identifier: MIT
#include "tests/launch/xdg_tree.h"

#include <QFile>

namespace zentorin::test {

XdgFolders XdgTree::Folders() const {
  XdgFolders folders;
  folders.config = QStringList{Path("config"), Path("config-system")};
  folders.data = QStringList{Path("data"), Path("data-system")};
  folders.desktops = QStringList{"gnome"};
  folders.commands = QStringList{Path("bin")};
  return folders;
}

QString XdgTree::AddCommand(const QString& name, const QByteArray& script) const {
  const QString path = Write("bin/" + name, "#!/bin/sh\n" + script + "\n");
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return path;
}

void XdgTree::AddProgram(const QString& name, const QByteArray& codes,
                         const QByteArray& lines) const {
  AddCommand(name);
  Write(QStringLiteral("data-system/applications/%1.desktop").arg(name),
        "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=" + name.toUtf8() +
            ' ' + codes + '\n' + lines + '\n');
}

}  // namespace zentorin::test
