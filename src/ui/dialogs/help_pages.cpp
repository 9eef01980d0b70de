// SPDX-License-Identifier: MIT
#include "ui/dialogs/help_pages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

// From the build system: ZENTORIN_HELP_SOURCE, docs/help in the source tree.

namespace zentorin {

QString HelpFileName(HelpPage page) {
  switch (page) {
    case HelpPage::Contents:
      return QStringLiteral("index.html");
    case HelpPage::Patterns:
      return QStringLiteral("patterns.html");
    case HelpPage::History:
      return QStringLiteral("history.html");
  }
  return {};
}

QString FindHelpFolder() {
  const QString installed =
      QCoreApplication::applicationDirPath() + QStringLiteral("/../share/zentorin/help");
  for (const QString& folder : {installed, QStringLiteral(ZENTORIN_HELP_SOURCE)}) {
    if (QFileInfo::exists(folder + u'/' + HelpFileName(HelpPage::Contents))) {
      return QDir(folder).canonicalPath();
    }
  }
  return {};
}

}  // namespace zentorin
