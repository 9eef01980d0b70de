// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "launch/installed_programs.h"

namespace zentorin {

// By the desktops' common rules: defaults of user and system, then what was added, then what the
// programs declare.
class MimeAssociations {
 public:
  explicit MimeAssociations(const InstalledPrograms& programs) : programs_(programs) {}

  // Best first; after them the programs of the types that this one is a kind of.
  std::vector<DesktopEntry> ProgramsFor(const QString& type) const;

  static QString TypeOfExtension(const QString& extension);  // without its "."; empty when unknown

 private:
  QStringList IdsFor(const QString& type) const;

  const InstalledPrograms& programs_;
};

}  // namespace zentorin
