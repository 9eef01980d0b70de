// SPDX-License-Identifier: MIT
#include "download/run_outcome.h"

#include "download/row_download.h"

namespace zentorin {

void RunOutcome::Add(const RowOutcome& row) {
  switch (row.code.Number()) {
    case RowCode::Complete:
      ++completed;
      bytes += row.bytes;
      Add(row.reason);
      return;
    case RowCode::Cancelled:
      return;
    case RowCode::SkipExisting:
    case RowCode::SkipNone:
    case RowCode::Skip:
      ++skipped;
      Add(row.reason);
      return;
    default:
      ++failed;
      anyFailure = true;
      Add(row.reason);
  }
}

void RunOutcome::Add(const MissReason& reason) {
  missing.Add(reason.kind);
  anyFailure |= IsFailure(reason.kind);
}

void RunOutcome::Add(const RunOutcome& part) {
  jobs += part.jobs;
  completed += part.completed;
  failed += part.failed;
  skipped += part.skipped;
  bytes += part.bytes;
  missing.Add(part.missing);
  rootsMissing += part.rootsMissing;
  anyFailure |= part.anyFailure;
  errorFlag |= part.errorFlag;
  fatal |= part.fatal;
  cancelled |= part.cancelled;
}

ExitStatus ExitStatusOf(const RunOutcome& outcome) {
  if (outcome.cancelled) return kExitCancelled;
  if (outcome.refused) return kExitRefused;
  return outcome.anyFailure ? kExitFailures : kExitDone;
}

}  // namespace zentorin
