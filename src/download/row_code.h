// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/outcome.h"

namespace zentorin {

// How one row of a download run ended: one of the named results, or a run-time error.
class RowCode {
 public:
  enum Named {
    ToolNotInstalled = -5,
    FolderNotCreated = -4,  // fatal
    Imperfect = -3,
    DownloadFailed = -2,
    Fatal = -1,
    Complete = 0,
    Cancelled = 1,
    SkipExisting = 2,
    SkipNone = 3,
    Skip = 4,
    OutOfDiskSpace = 61,  // fatal; the run-time error of that number
  };

  // NOLINTBEGIN(google-explicit-constructor): both are row codes
  constexpr RowCode(Named code)
      : number_(code), error_(code == OutOfDiskSpace ? RunTimeError::DiskFull : RunTimeError()) {}
  constexpr RowCode(RunTimeError error) : number_(static_cast<int>(error)), error_(error) {}
  // NOLINTEND(google-explicit-constructor)

  constexpr int Number() const { return number_; }
  constexpr RunTimeError Error() const { return error_; }
  // What was written for such a row is deleted.
  constexpr bool IsRunTimeError() const { return error_ != RunTimeError::None; }
  constexpr bool IsFatal() const { return *this == FolderNotCreated || *this == OutOfDiskSpace; }

  friend constexpr bool operator==(RowCode a, RowCode b) { return a.number_ == b.number_; }

 private:
  int number_;
  RunTimeError error_;
};

struct RowReport {
  QString text;  // status text, as the log shows it
  QString mark;  // column 0 of the row
  bool showsCode = false;
  bool setsErrorFlag = false;
};

RowReport ReportFor(RowCode code, bool cancelled);

QString TextWithCode(RowCode code, const RowReport& report);

// What a row adds to the log. `folderPrefix` ends with its separator. `reason`: what is known
// beyond the code of a row that failed.
QString LogTextFor(RowCode code, const RowReport& report, const QString& address,
                   const QString& folderPrefix, const QString& reason);

}  // namespace zentorin
