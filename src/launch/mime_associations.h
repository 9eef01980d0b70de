// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "launch/installed_programs.h"

namespace zentorin {

// Which programs the desktop has registered for a type of content, in the order of the desktops'
// common rules: what the user and the system chose as default, then what was added, then what the
// programs declare themselves. The counterpart of the registry's classes and their open commands.
class MimeAssociations {
 public:
  // `programs` outlives the object.
  explicit MimeAssociations(const InstalledPrograms& programs) : programs_(programs) {}

  // The installed programs for a type ("audio/mpeg", "x-scheme-handler/mms"), best first; after
  // them those of the types that it is a kind of (a page is text, too).
  std::vector<DesktopEntry> ProgramsFor(const QString& type) const;

  // The content type that goes with a file extension (without its "."); empty when none is known.
  static QString TypeOfExtension(const QString& extension);

 private:
  QStringList IdsFor(const QString& type) const;

  const InstalledPrograms& programs_;
};

}  // namespace zentorin
