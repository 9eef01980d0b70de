// SPDX-License-Identifier: MIT
#include "app/program_title.h"

#include <QFileInfo>

// The build system's project version: ZENTORIN_MAJOR, ZENTORIN_MINOR, ZENTORIN_REVISION.

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

QString ProductVersion() {
  return u"%1.%2.%3"_s.arg(ZENTORIN_MAJOR).arg(ZENTORIN_MINOR).arg(ZENTORIN_REVISION);
}

QString ProductTitle() {
  return ProductTitle(ZENTORIN_MAJOR, ZENTORIN_MINOR, ZENTORIN_REVISION);
}

QString ProductTitle(int major, int minor, int revision) {
  return u"%1 %2.%3%4"_s.arg(ProductName()).arg(major).arg(minor).arg(revision);
}

QString ProgramTitle(const QString& currentListFile) {
  if (currentListFile.isEmpty()) return ProductTitle();
  return ProductTitle() + u"　-　"_s + QFileInfo(currentListFile).fileName();
}

}  // namespace zentorin
