// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include "base/text_file.h"

namespace zentorin {

// The ready-made entries of the two pattern boxes: a label, a colon and an expression.
class PatternLists {
 public:
  PatternLists();

  const QStringList& SubUrl() const { return subUrl_; }  // `cmbUrl_SubPattern`
  const QStringList& File() const { return file_; }      // `cmbFilePattern`

  // Reads the file, or writes it when it is missing. One that cannot be read changes nothing.
  Outcome LoadOrCreate(const QString& path);

  // What follows the first ":", without blanks; the whole entry when there is none.
  static QString ExpressionOf(const QString& entry);

 private:
  QStringList subUrl_;
  QStringList file_;
};

}  // namespace zentorin
