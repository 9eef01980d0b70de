// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/text_file.h"

namespace zentorin {

class Clock;

// log.txt, open only while an entry is written. What its character set lacks becomes "\\u{hex}".
class LogFile {
 public:
  LogFile(QString path, const Clock& clock);

  const QString& Path() const { return path_; }
  bool Exists() const;
  // Whether it holds an entry of this run.
  bool WasWritten() const;

  Outcome Append(const QString& text, bool startNew = false);
  // Makes what was appended durable, for a call that may cut the power.
  Outcome Sync() const;
  Outcome Read(QString& text) const;

 private:
  QString path_;
  const Clock& clock_;
  bool written_ = false;
};

}  // namespace zentorin
