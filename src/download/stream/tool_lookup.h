// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

class InstalledPrograms;
struct DesktopEntry;

// A recording program as it was found on this machine.
struct FoundTool {
  enum class Kind { Vlc, StreamGet };

  Kind kind = Kind::Vlc;
  QString path;       // of the program's own file
  QStringList words;  // that start it
};

// Finds the recording programs among the installed ones, by name.
//
// VLC is the program file of its desktop entry, and without one the command "vlc" or "cvlc" of the
// path. The file must have one of these two names: what an entry starts instead (a sandbox, a
// script) cannot be given the words that VLC understands.
//
// StreamGet is a Windows program: the entry that a compatibility layer made for it starts it, and
// its file "StreamGet.exe" lies in the entry's folder or is named in the entry's Exec, as a path of
// this system or as one of the layer's ("C:\…", below $WINEPREFIX).
class ToolLookup {
 public:
  // The values of the setting.
  static constexpr int kVlc = 0;
  static constexpr int kStreamGet = 1;

  // `programs` outlives the object.
  explicit ToolLookup(const InstalledPrograms& programs) : programs_(programs) {}

  // The tool of a setting, when it is there.
  std::optional<FoundTool> Find(int setting) const;
  // VLC when it is there, else StreamGet.
  std::optional<FoundTool> FindAny() const;

  // Names both tools, by setting, with their files.
  QStringList Captions() const;

 private:
  std::optional<FoundTool> FindVlc() const;
  std::optional<FoundTool> FindStreamGet() const;

  const InstalledPrograms& programs_;
};

}  // namespace zentorin
