// SPDX-License-Identifier: MIT
#include "launch/xdg_folders.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList AbsoluteFolders(const QString& list) {
  QStringList folders;
  for (const QString& folder : list.split(u':', Qt::SkipEmptyParts)) {
    if (QDir::isAbsolutePath(folder)) folders.append(QDir::cleanPath(folder));
  }
  return folders;
}

QString Variable(const char* name, const QString& otherwise) {
  const QString value = qEnvironmentVariable(name);
  return value.isEmpty() ? otherwise : value;
}

QStringList HomeThenOthers(const QString& home, const QString& others) {
  QStringList folders = AbsoluteFolders(home) + AbsoluteFolders(others);
  folders.removeDuplicates();
  return folders;
}

}  // namespace

XdgFolders XdgFolders::FromEnvironment() {
  const QString home = QDir::homePath();
  XdgFolders folders;
  folders.config = HomeThenOthers(Variable("XDG_CONFIG_HOME", home + u"/.config"_s),
                                  Variable("XDG_CONFIG_DIRS", u"/etc/xdg"_s));
  folders.data = HomeThenOthers(Variable("XDG_DATA_HOME", home + u"/.local/share"_s),
                                Variable("XDG_DATA_DIRS", u"/usr/local/share:/usr/share"_s));
  folders.desktops =
      qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(u':', Qt::SkipEmptyParts);
  folders.commands = AbsoluteFolders(Variable("PATH", u"/usr/local/bin:/usr/bin:/bin"_s));
  return folders;
}

QString XdgFolders::FindCommand(const QString& command) const {
  if (command.isEmpty()) return {};
  if (QDir::isAbsolutePath(command)) {
    const QFileInfo file(command);
    return file.isFile() && file.isExecutable() ? command : QString();
  }
  // An empty list would make Qt look through the environment's own.
  if (command.contains(u'/') || commands.isEmpty()) return {};
  return QStandardPaths::findExecutable(command, commands);
}

}  // namespace zentorin
