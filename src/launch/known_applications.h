// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "launch/exec_line.h"
#include "launch/folder_placeholders.h"
#include "launch/mime_associations.h"
#include "launch/program_starter.h"

namespace zentorin {

struct KnownApplication {
  QStringView name;    // lower-cased
  QStringView folder;  // a place-holder
  QStringView tail;
  // On this system: the desktop's choice for `type`, if any, else the first of `candidates`
  // (between ",": ids of desktop entries without ".desktop", or commands) that is installed.
  QStringView type;
  QStringView candidates;
};

class KnownApplications {
 public:
  KnownApplications(const InstalledPrograms& programs, const FolderPlaceholders& placeholders)
      : programs_(programs), placeholders_(placeholders), associations_(programs) {}

  static const KnownApplication* Find(const QString& name);  // case is ignored

  QString TablePath(const KnownApplication& application) const;

  // An empty target just starts it. The program at the place that the table names is tried last.
  std::optional<ProgramRequest> RequestFor(const QString& name, const LaunchTarget& target) const;

  // A program of the terminal comes with an installed terminal around it, or not at all.
  std::optional<ProgramRequest> RequestFor(const DesktopEntry& entry,
                                           const LaunchTarget& target) const;

 private:
  std::optional<ProgramRequest> Candidate(const QString& candidate,
                                          const LaunchTarget& target) const;
  QStringList TerminalWords() const;

  const InstalledPrograms& programs_;
  const FolderPlaceholders& placeholders_;
  MimeAssociations associations_;
};

}  // namespace zentorin
