// SPDX-License-Identifier: MIT
#include "launch/installed_programs.h"

#include <QDirIterator>
#include <QMap>
#include <QSet>

#include "launch/exec_line.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMaxFiles = 20000;

QString ApplicationsFolder(const QString& dataFolder) {
  return dataFolder + u"/applications/"_s;
}

bool Matches(const QString& displayName, const QString& name) {
  return displayName.compare(name, Qt::CaseInsensitive) == 0 ||
         displayName.startsWith(name + u' ', Qt::CaseInsensitive);
}

}  // namespace

void InstalledPrograms::VisitEntries(
    const QString& dataFolder,
    const std::function<void(const QString& id, const QString& path)>& visit) {
  const QString root = ApplicationsFolder(dataFolder);
  QMap<QString, QString> paths;
  QDirIterator files(root, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
  for (int i = 0; i < kMaxFiles && files.hasNext(); ++i) {
    const QString path = files.next();
    // An entry in a folder of its own has the folder's name in its id: "kde/a" is "kde-a".
    paths.insert(path.sliced(root.size()).replace(u'/', u'-'), path);
  }
  for (auto entry = paths.cbegin(); entry != paths.cend(); ++entry) {
    visit(entry.key(), entry.value());
  }
}

std::vector<DesktopEntry> InstalledPrograms::List() const {
  std::vector<DesktopEntry> programs;
  QSet<QString> seen;
  for (const QString& folder : folders_.data) {
    VisitEntries(folder, [&](const QString& id, const QString& path) {
      if (seen.contains(id)) return;
      seen.insert(id);
      auto entry = DesktopEntry::Read(path, id);
      if (entry && Usable(*entry)) programs.push_back(std::move(*entry));
    });
  }
  return programs;
}

std::optional<DesktopEntry> InstalledPrograms::FindById(const QString& id) const {
  // An id is a name, never a way to a file somewhere else.
  if (!id.endsWith(u".desktop"_s) || id.contains(u'/')) return std::nullopt;
  for (const QString& folder : folders_.data) {
    QString name = id;
    QString path = ApplicationsFolder(folder) + name;
    // "kde-a" may be "kde/a": each "-" from the left is tried as the border of a folder.
    for (qsizetype dash = name.indexOf(u'-'); dash >= 0 && !QFileInfo::exists(path);
         dash = name.indexOf(u'-', dash + 1)) {
      name[dash] = u'/';
      path = ApplicationsFolder(folder) + name;
      if (!QFileInfo::exists(path) && !QFileInfo(path).dir().exists()) name[dash] = u'-';
    }
    if (!QFileInfo::exists(path)) continue;
    auto entry = DesktopEntry::Read(path, id);
    return entry && Usable(*entry) ? entry : std::nullopt;
  }
  return std::nullopt;
}

std::optional<DesktopEntry> InstalledPrograms::FindByDisplayName(
    const QString& commaSeparatedNames) const {
  const std::vector<DesktopEntry> programs = List();
  for (const QString& part : commaSeparatedNames.split(u',', Qt::SkipEmptyParts)) {
    const QString name = part.trimmed();
    if (name.isEmpty()) continue;
    for (const DesktopEntry& program : programs) {
      if (Matches(program.name, name) || Matches(program.localName, name)) return program;
    }
  }
  return std::nullopt;
}

QString InstalledPrograms::ProgramFile(const DesktopEntry& entry) const {
  const auto words = ExpandExec(entry, {});
  return words ? folders_.FindCommand(words->first()) : QString();
}

bool InstalledPrograms::Usable(const DesktopEntry& entry) const {
  if (entry.hidden) return false;
  if (!entry.tryExec.isEmpty() && folders_.FindCommand(entry.tryExec).isEmpty()) return false;
  return !ProgramFile(entry).isEmpty();
}

}  // namespace zentorin
