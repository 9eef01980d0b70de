// SPDX-License-Identifier: MIT
#include "ui/dialogs/help_pages.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace zentorin::test {
namespace {

QString ReadPage(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QSet<QString> FirstGroups(const QString& text, const char* expression) {
  QSet<QString> groups;
  auto match = QRegularExpression(QLatin1StringView(expression)).globalMatch(text);
  while (match.hasNext()) groups.insert(match.next().captured(1));
  return groups;
}

TEST(HelpPages, EveryLinkAndAnchorInThePagesLeadsSomewhereOnThisMachine) {
  const QDir folder(FindHelpFolder());
  int links = 0;
  for (const QString& name : folder.entryList({"*.html"})) {
    for (const QString& link :
         FirstGroups(ReadPage(folder.filePath(name)), "\\s(?:href|src)=\"([^\"]*)\"")) {
      ++links;
      const QString file = link.section(u'#', 0, 0);
      const QString target = ReadPage(folder.filePath(file.isEmpty() ? name : file));
      EXPECT_FALSE(target.isEmpty()) << (name + u' ' + link).toStdString();
      const QString anchor = link.section(u'#', 1);
      EXPECT_TRUE(anchor.isEmpty() || FirstGroups(target, "\\sid=\"([^\"]*)\"").contains(anchor))
          << (name + u' ' + link).toStdString();
    }
  }
  EXPECT_GT(links, 40);
}

}  // namespace
}  // namespace zentorin::test
