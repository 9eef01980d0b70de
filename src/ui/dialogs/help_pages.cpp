// SPDX-License-Identifier: MIT
#include "ui/dialogs/help_pages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

// From the build system: ZENTORIN_HELP_SOURCE, docs/help in the source tree.

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

QString HelpFileName(HelpPage page) {
  switch (page) {
    case HelpPage::Contents:
      return u"index.html"_s;
    case HelpPage::Patterns:
      return u"patterns.html"_s;
    case HelpPage::History:
      return u"history.html"_s;
  }
  return {};
}

QString FindHelpFolder() {
  const QString installed = QCoreApplication::applicationDirPath() + u"/../share/zentorin/help"_s;
  for (const QString& folder : {installed, QString::fromUtf8(ZENTORIN_HELP_SOURCE)}) {
    if (QFileInfo::exists(folder + u'/' + HelpFileName(HelpPage::Contents))) {
      return QDir(folder).canonicalPath();
    }
  }
  return {};
}

}  // namespace zentorin
