// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "launch/desktop_entry.h"
#include "launch/xdg_folders.h"

namespace zentorin {

// By their desktop entries. The folders are read anew each time.
class InstalledPrograms {
 public:
  explicit InstalledPrograms(XdgFolders folders) : folders_(std::move(folders)) {}

  const XdgFolders& Folders() const { return folders_; }

  // Hidden programs and those without their command are left out. Of several entries with one id
  // the most important folder's counts, also when it hides the program.
  std::vector<DesktopEntry> List() const;

  std::optional<DesktopEntry> FindById(const QString& id) const;  // "vlc.desktop"

  // Names in the order of preference. One matches by itself or with a blank and more behind it (a
  // version); case is ignored.
  std::optional<DesktopEntry> FindByDisplayName(const QString& commaSeparatedNames) const;

  QString ProgramFile(const DesktopEntry& entry) const;  // empty when it is not there

  // Sorted by id. At most 20,000 files are looked at; folder links are not followed.
  static void VisitEntries(
      const QString& dataFolder,
      const std::function<void(const QString& id, const QString& path)>& visit);

 private:
  bool Usable(const DesktopEntry& entry) const;

  XdgFolders folders_;
};

}  // namespace zentorin
