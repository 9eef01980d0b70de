// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/text_file.h"

namespace zentorin {

class Clock;

// log.txt, opened and closed for every entry. Characters that the file's character set lacks are
// written as "\\u{hex}", so that an entry is never lost to an odd address.
class LogFile {
 public:
  // `path` is absolute; `clock` must outlive the log.
  LogFile(QString path, const Clock& clock);

  const QString& Path() const { return path_; }
  bool Exists() const;
  // Whether it holds an entry of this run.
  bool WasWritten() const;

  // Adds an entry; with `startNew` the file is begun anew.
  FileOutcome Append(const QString& text, bool startNew = false);
  // Makes what was appended durable, for a call that may cut the power.
  FileOutcome Sync() const;
  // The whole log as text.
  FileOutcome Read(QString& text) const;

 private:
  QString path_;
  const Clock& clock_;
  bool written_ = false;
};

}  // namespace zentorin
