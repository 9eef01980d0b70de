// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

class InstalledPrograms;
struct DesktopEntry;

struct FoundTool {
  enum class Kind { Vlc, StreamGet };

  Kind kind = Kind::Vlc;
  QString path;       // of the program's own file
  QStringList words;  // that start it
};

// Finds the recording programs among the installed ones, by name.
class ToolLookup {
 public:
  static constexpr int kVlc = 0;  // values of the setting
  static constexpr int kStreamGet = 1;

  explicit ToolLookup(const InstalledPrograms& programs) : programs_(programs) {}

  std::optional<FoundTool> Find(int setting) const;
  std::optional<FoundTool> FindAny() const;  // VLC, else StreamGet

  QStringList Paths() const;  // of both tools by setting; empty for one that is not installed

 private:
  std::optional<FoundTool> FindVlc() const;
  std::optional<FoundTool> FindStreamGet() const;

  const InstalledPrograms& programs_;
};

}  // namespace zentorin
