// SPDX-License-Identifier: MIT
#include "launch/desktop_entry.h"

#include "launch/key_file.h"

namespace zentorin {

std::optional<DesktopEntry> DesktopEntry::Read(const QString& path, const QString& id) {
  const auto file = KeyFile::Read(path);
  const QString group = QStringLiteral("Desktop Entry");
  if (!file || file->Raw(group, QStringLiteral("Type")) != QStringLiteral("Application"))
    return std::nullopt;
  DesktopEntry entry;
  entry.id = id;
  entry.path = path;
  entry.name = file->Text(group, QStringLiteral("Name"));
  // All that the user sees of this program is Japanese, so its names for programs are, too.
  for (const QString& key : {QStringLiteral("Name[ja_JP]"), QStringLiteral("Name[ja]")})
    if (entry.localName.isEmpty()) entry.localName = file->Text(group, key);
  if (entry.localName.isEmpty()) entry.localName = entry.name;
  entry.exec = file->Text(group, QStringLiteral("Exec"));
  entry.tryExec = file->Text(group, QStringLiteral("TryExec"));
  entry.icon = file->Text(group, QStringLiteral("Icon"));
  entry.folder = file->Text(group, QStringLiteral("Path"));
  entry.types = file->List(group, QStringLiteral("MimeType"));
  entry.hidden = file->Flag(group, QStringLiteral("Hidden"));
  entry.noDisplay = file->Flag(group, QStringLiteral("NoDisplay"));
  entry.terminal = file->Flag(group, QStringLiteral("Terminal"));
  return entry;
}

}  // namespace zentorin
