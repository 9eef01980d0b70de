// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Outcome of one row of a download run. Positive numbers that are not named here are run-time error
// numbers.
enum ResultCode : int {
  kToolNotInstalled = -5,
  kFolderNotCreated = -4,  // fatal
  kImperfect = -3,
  kDownloadFailed = -2,
  kFatal = -1,
  kComplete = 0,
  kCancelled = 1,
  kSkipExisting = 2,
  kSkipNone = 3,
  kSkip = 4,
  kOutOfDiskSpace = 61,  // fatal
};

// Codes from here on are run-time errors: the file that was being written is deleted.
inline constexpr int kFirstRunTimeError = 21;

// How a code is reported.
struct ResultReport {
  QString text;  // status text, as the log shows it
  QString mark;  // column 0 of the row
  bool showsCode = false;
  bool setsErrorFlag = false;
};

ResultReport ReportFor(int code, bool cancelRequested);

// The status text, with the code behind it where it is shown.
QString TextWithCode(int code, const ResultReport& report);

// What a row adds to the log. Every code ends its lines in its own way. `folderPrefix`: the local
// folder with its trailing separator. `reason`: what is known beyond the code of a row that failed.
QString LogTextFor(int code, const ResultReport& report, const QString& address,
                   const QString& folderPrefix, const QString& reason);

}  // namespace zentorin
