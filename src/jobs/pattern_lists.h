// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include "base/text_file.h"

namespace zentorin {

// The ready-made expressions of the two pattern boxes, each entry a label, a colon and the
// expression. Kept in reglist.txt of the program's folder.
class PatternLists {
 public:
  // Starts with the built-in entries.
  PatternLists();

  const QStringList& SubUrl() const { return subUrl_; }  // `cmbUrl_SubPattern`
  const QStringList& File() const { return file_; }      // `cmbFilePattern`

  // Reads `path` when it exists, else writes the built-in entries there. A file that exists but
  // cannot be read leaves the lists as they were.
  FileOutcome LoadOrCreate(const QString& path);

  // The text that choosing an entry leaves in the box: what follows the first ":", trimmed of
  // blanks; the whole text when there is no ":".
  static QString ExpressionOf(const QString& entry);

 private:
  QStringList subUrl_;
  QStringList file_;
};

}  // namespace zentorin
