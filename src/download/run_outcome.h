// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include "download/row_code.h"
#include "net/miss_reason.h"

namespace zentorin {

struct RowOutcome;

enum ExitStatus : int {
  kExitDone = 0,
  kExitRefused = 1,   // nothing was run
  kExitFailures = 2,  // at least one row or job failed
  kExitCancelled = 130,
};

// What a run came to: of one file list, or of all jobs of a batch.
struct RunOutcome {
  qint64 jobs = 0;
  qint64 completed = 0;  // rows
  qint64 failed = 0;
  qint64 skipped = 0;
  qint64 bytes = 0;          // of the completed rows
  MissCounts missing;        // rows, and pages and expressions of the lists
  QStringList rootsMissing;  // descriptions of the jobs whose root URL was not found

  bool refused = false;          // it did not begin: its list was not to be had
  bool nothingSelected = false;  // the same for want of selected rows; the user was told
  bool anyFailure = false;       // of a row, a list, the log
  bool errorFlag = false;        // a row, a root or the log failed without ending the run
  bool fatal = false;            // a row or the log ended it
  bool cancelled = false;        // the user ended it

  void Add(const RowOutcome& row);
  void Add(const MissReason& reason);
  void Add(const RunOutcome& part);
};

ExitStatus ExitStatusOf(const RunOutcome& outcome);

}  // namespace zentorin
