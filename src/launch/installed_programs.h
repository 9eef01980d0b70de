// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "launch/desktop_entry.h"
#include "launch/xdg_folders.h"

namespace zentorin {

// The programs that are installed, by their desktop entries: this system's list of installed
// programs. Each question reads the folders anew, so a program installed meanwhile is found.
class InstalledPrograms {
 public:
  explicit InstalledPrograms(XdgFolders folders) : folders_(std::move(folders)) {}

  const XdgFolders& Folders() const { return folders_; }

  // Every program whose entry is not hidden and whose command is there. Of several entries with one
  // id the most important folder's counts, also when it hides the program.
  std::vector<DesktopEntry> List() const;

  // The usable program with that id ("vlc.desktop").
  std::optional<DesktopEntry> FindById(const QString& id) const;

  // The first program whose Name or Japanese name matches one of the names in a list such as "VLC
  // media player,VideoLAN VLC", tried in that order: equal, or the name and then a blank and more
  // (a version); case is ignored.
  std::optional<DesktopEntry> FindByDisplayName(const QString& commaSeparatedNames) const;

  // The full path of the program that an entry starts; empty when it is not there.
  QString ProgramFile(const DesktopEntry& entry) const;

  // Calls `visit` with id and path of every entry below one folder of `Folders().data`, sorted by
  // id. At most 20,000 files are looked at and folder links are not followed.
  static void VisitEntries(
      const QString& dataFolder,
      const std::function<void(const QString& id, const QString& path)>& visit);

 private:
  bool Usable(const DesktopEntry& entry) const;

  XdgFolders folders_;
};

}  // namespace zentorin
