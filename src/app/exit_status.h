// SPDX-License-Identifier: MIT
#pragma once

namespace zentorin {

// How an unattended run ended, as its exit status.
enum ExitStatus : int {
  kExitDone = 0,
  kExitRefused = 1,   // start-up ended with a message; nothing was run
  kExitFailures = 2,  // at least one row or job failed
  kExitCancelled = 130,
};

}  // namespace zentorin
