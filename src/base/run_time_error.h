// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Numbers of run-time errors as rows, logs and messages show them.
enum class RunTimeError {
  None = 0,
  Other = 51,
  BadFileName = 52,
  InputOutput = 57,
  DiskFull = 61,
  PermissionDenied = 70,
  PathAccess = 75,  // is a directory, or cannot be accessed
  PathMissing = 76,
};

// The number that stands for a system error code (errno).
RunTimeError RunTimeErrorFromErrno(int systemError);

// The description of an error in Japanese, without a full stop.
QString DescribeRunTimeError(RunTimeError error);

}  // namespace zentorin
