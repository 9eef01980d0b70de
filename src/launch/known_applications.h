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

// A well-known application: its place in the table, and what stands for it on this system.
struct KnownApplication {
  QStringView name;    // lower-cased
  QStringView folder;  // a place-holder
  QStringView tail;
  // On this system: the desktop's choice for `type` when that is given, else the first of
  // `candidates` (separated by ",") that is installed. A candidate is the id of a desktop entry
  // without ".desktop", or a command.
  QStringView type;
  QStringView candidates;
};

// The table of well-known applications and the search for what stands for them here.
class KnownApplications {
 public:
  // Both outlive the object.
  KnownApplications(const InstalledPrograms& programs, const FolderPlaceholders& placeholders)
      : programs_(programs), placeholders_(placeholders), associations_(programs) {}

  // The row of a name, whatever its case ("IE" finds "ie").
  static const KnownApplication* Find(const QString& name);

  // The program's path by the table, its place-holder replaced.
  QString TablePath(const KnownApplication& application) const;

  // How to open `target` (empty: just start) in the application. Nothing when none of what could
  // stand for it is installed; the program of the table itself is the last that is tried, if the
  // user has put one that can be run at its place.
  std::optional<ProgramRequest> RequestFor(const QString& name, const LaunchTarget& target) const;

  // How to open `target` in an installed program. A program of the terminal comes with an installed
  // terminal around it, and counts as not usable when there is none.
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
