// SPDX-License-Identifier: MIT
#include "launch/folder_placeholders.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <array>

#include "base/drives.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Special folders by number: the desktop 16, Windows 36, the system 37, program files 38.
constexpr std::array kPlaceholders = {u"<DESKTOP>", u"<WINDOWS>", u"<SYSTEM>", u"<PROGRAM_FILES>",
                                      u"<OFFICE>"};

bool LiesIn(const QString& path, const QString& folder) {
  return path.startsWith(folder, Qt::CaseInsensitive) &&
         (path.size() == folder.size() || folder.endsWith(u'\\') || path[folder.size()] == u'\\' ||
          path[folder.size()] == u'/');
}

}  // namespace

QString FolderPlaceholders::Folder(const QString& placeholder) const {
  if (placeholder == u"<DESKTOP>"_s) {
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
  }
  if (placeholder == u"<WINDOWS>"_s) return u"C:\\WINDOWS"_s;
  if (placeholder == u"<SYSTEM>"_s) return u"C:\\WINDOWS\\system32"_s;
  if (placeholder == u"<PROGRAM_FILES>"_s) return u"C:\\Program Files"_s;
  if (placeholder == u"<OFFICE>"_s) return OfficeFolder();
  return {};
}

// The Office folder ends in "\": the tails of the table follow it without one.
QString FolderPlaceholders::OfficeFolder() const {
  // The list ends in ",", so that its last version is an empty one: the plain "Office" folder.
  for (const QString& version : u"16,15,14,13,12,11,10,9,"_s.split(u',')) {
    const QString folder = Folder(u"<PROGRAM_FILES>"_s) + u"\\Microsoft Office\\Office"_s + version;
    // Names on such a drive are the same in any case; a filter of QDir ignores it, too.
    const QDir place(drives_.ToSystemPath(folder));
    if (!place.entryList({u"excel.exe"_s}, QDir::Files).isEmpty()) return folder + u'\\';
  }
  return {};
}

QString FolderPlaceholders::Expand(const QString& path) const {
  static const QRegularExpression pattern(u"<.*>"_s);
  const QRegularExpressionMatch match = pattern.match(path);
  if (!match.hasMatch()) return path;
  const QString folder = Folder(match.captured());
  if (folder.isEmpty()) return path;
  return path.first(match.capturedStart()) + folder + path.sliced(match.capturedEnd());
}

QString FolderPlaceholders::Collapse(const QString& path) const {
  QString best;
  QString bestFolder;
  for (const char16_t* name : kPlaceholders) {
    const QString placeholder = QString::fromUtf16(name);
    const QString folder = Folder(placeholder);
    if (folder.size() <= bestFolder.size() || !LiesIn(path, folder)) continue;
    best = placeholder;
    bestFolder = folder;
  }
  return best + path.sliced(bestFolder.size());
}

QString FolderPlaceholders::SystemPath(const QString& path) const {
  return path.contains(u'<') ? QString() : drives_.ToSystemPath(path);
}

}  // namespace zentorin
