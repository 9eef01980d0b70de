// SPDX-License-Identifier: MIT
#include "launch/desktop_entry.h"

#include "launch/key_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

std::optional<DesktopEntry> DesktopEntry::Read(const QString& path, const QString& id) {
  const auto file = KeyFile::Read(path);
  const QString group = u"Desktop Entry"_s;
  if (!file || file->Raw(group, u"Type"_s) != u"Application"_s) return std::nullopt;
  DesktopEntry entry;
  entry.id = id;
  entry.path = path;
  entry.name = file->Text(group, u"Name"_s);
  // All that the user sees of this program is Japanese, so its names for programs are, too.
  for (const QString& key : {u"Name[ja_JP]"_s, u"Name[ja]"_s}) {
    if (entry.localName.isEmpty()) entry.localName = file->Text(group, key);
  }
  if (entry.localName.isEmpty()) entry.localName = entry.name;
  entry.exec = file->Text(group, u"Exec"_s);
  entry.tryExec = file->Text(group, u"TryExec"_s);
  entry.icon = file->Text(group, u"Icon"_s);
  entry.folder = file->Text(group, u"Path"_s);
  entry.types = file->List(group, u"MimeType"_s);
  entry.hidden = file->Flag(group, u"Hidden"_s);
  entry.terminal = file->Flag(group, u"Terminal"_s);
  return entry;
}

}  // namespace zentorin
