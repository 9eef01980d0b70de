// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include "app/exit_status.h"

namespace zentorin {

struct FinishedRow;

// What an unattended run did, counted row by row.
class RunTally {
 public:
  void AddJob() { ++jobs_; }
  // `saveFolder`: where the row's job saves, a path of this system.
  void AddRow(const FinishedRow& row, const QString& saveFolder);

  // The closing lines: outcome and counts, then the folders that files were saved into.
  QStringList Summary(ExitStatus status) const;

 private:
  qint64 jobs_ = 0;
  qint64 completed_ = 0;
  qint64 failed_ = 0;
  qint64 skipped_ = 0;
  qint64 bytes_ = 0;
  QStringList folders_;
  QSet<QString> knownFolders_;
};

}  // namespace zentorin
