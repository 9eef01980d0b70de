// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// One row of a download run as the run leaves it: what a terminal shows and what a summary counts.
struct FinishedRow {
  int code = 0;      // a ResultCode or a run-time error number
  QString text;      // its status text with the code, as the log has it
  QString address;   // what was asked for, as the log has it
  QString path;      // the local file, a path of this system; empty when it did not come so far
  qint64 bytes = 0;  // size of the file after a complete download, else 0
};

}  // namespace zentorin
