// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

struct DesktopEntry;

struct LaunchTarget {
  QString text;  // absolute path or address; neither can begin with "-"
  bool isFile = false;
};

// The words of an entry's Exec, the program first; no shell ever sees them. A target that no field
// code asks for is the last word. Nothing when the line is broken, when its program would come out
// of a field code, when it opens only files and the target is an address, or when a target would
// stand in a quoted word (sh -c "play %f" would read it as commands).
std::optional<QStringList> ExpandExec(const DesktopEntry& entry, const LaunchTarget& target);

}  // namespace zentorin
