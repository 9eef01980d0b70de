// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

struct DesktopEntry;

// What a program is asked to open: a file of this machine or an address elsewhere.
struct LaunchTarget {
  QString text;  // absolute path or address; neither can begin with "-"
  bool isFile = false;
};

// The words of an entry's Exec with its field codes filled in for one target; the first is the
// program. No shell ever sees them, so nothing in a target's text has a meaning. A target that no
// field code asks for is the last word; an empty target is left out.
//
// Nothing when the line cannot be used:
// - it is empty, holds a control character, an open quote or an unknown field code;
// - its program would come out of a field code (a downloaded file would be run);
// - a target stands inside a quoted word beside other text: such words are lines for some
//   interpreter (sh -c "play %f"), in which a file's name would be read as commands;
// - it can only open files and the target is an address.
std::optional<QStringList> ExpandExec(const DesktopEntry& entry, const LaunchTarget& target);

}  // namespace zentorin
