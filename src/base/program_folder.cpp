// SPDX-License-Identifier: MIT
#include "base/program_folder.h"

#include <QDir>
#include <QFileInfo>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

bool Holds(const QString& folder, const QString& file) {
  return QFileInfo::exists(QDir(folder).filePath(file));
}

QString DataFolder() {
  const QString data = qEnvironmentVariable("XDG_DATA_HOME");
  // A relative $XDG_DATA_HOME is to be ignored, its standard says.
  return QDir::isAbsolutePath(data) ? data : QDir::home().filePath(u".local/share"_s);
}

QString ChooseFolder(const QString& executableFolder) {
  QString home = qEnvironmentVariable("ZENTORIN_HOME");
  if (!home.isEmpty()) return home;
  if (!executableFolder.isEmpty() &&
      (Holds(executableFolder, u"Conf.txt"_s) || Holds(executableFolder, u"portable"_s))) {
    return executableFolder;
  }
  return QDir(DataFolder()).filePath(u"zentorin"_s);
}

}  // namespace

QString FindProgramFolder(const QString& executableFolder) {
  const QString folder = QDir::cleanPath(QDir(ChooseFolder(executableFolder)).absolutePath());
  return QDir().mkpath(folder) && QFileInfo(folder).isDir() ? folder : QString();
}

}  // namespace zentorin
