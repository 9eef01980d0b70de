// SPDX-License-Identifier: MIT
#include "app/program_title.h"

#include <QFileInfo>

// The build system's project version: ZENTORIN_MAJOR, ZENTORIN_MINOR, ZENTORIN_REVISION.

namespace zentorin {

QString ProductName() {
  return QStringLiteral("Zentorin");
}

QString ProductVersion() {
  return QStringLiteral("%1.%2.%3").arg(ZENTORIN_MAJOR).arg(ZENTORIN_MINOR).arg(ZENTORIN_REVISION);
}

QString ProductTitle() {
  return ProductTitle(ZENTORIN_MAJOR, ZENTORIN_MINOR, ZENTORIN_REVISION);
}

QString ProductTitle(int major, int minor, int revision) {
  return QStringLiteral("%1 %2.%3%4").arg(ProductName()).arg(major).arg(minor).arg(revision);
}

QString ProgramTitle(const QString& currentListFile) {
  if (currentListFile.isEmpty()) return ProductTitle();
  return ProductTitle() + QStringLiteral("　-　") + QFileInfo(currentListFile).fileName();
}

}  // namespace zentorin
