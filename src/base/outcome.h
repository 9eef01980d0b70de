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
  FileTooLarge = 63,
  TooManyFiles = 67,
  PermissionDenied = 70,
  PathAccess = 75,  // is a directory, or cannot be accessed
  PathMissing = 76,
};

RunTimeError RunTimeErrorFromErrno(int systemError);

// Done, or why not.
struct [[nodiscard]] Outcome {
  static Outcome Failed(RunTimeError error, const QString& message);
  // The message is the sentence, which has no full stop, and then the error's number.
  static Outcome FailedWithNumber(RunTimeError error, const QString& sentence);
  static Outcome Of(RunTimeError error, const QString& subject = {});  // in the words of the error
  static Outcome OfErrno(int systemError, const QString& subject = {});

  bool Ok() const { return error == RunTimeError::None; }
  QString NumberAndMessage() const;  // "70 …"

  RunTimeError error = RunTimeError::None;
  QString message;  // in Japanese, for the user
  QString subject;  // the path or address at fault, where the message does not name it
};

}  // namespace zentorin
