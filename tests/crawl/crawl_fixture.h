// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/workspace_test.h"

namespace zentorin::test {

// One selected job on a site that the loopback server serves as http://h.test/ (and any other
// host). Links are all that is quoted after "href=", files are what ends in ".mp3".
class CrawlTest : public WorkspaceTest {
 protected:
  CrawlTest() {
    urlList.InsertBelow(-1, TargetUrlItem());
    urlList.Select(0);
    Set(TargetUrlItem::Root, "http://h.test/");
    Set(TargetUrlItem::SubPattern, R"re(href="(.+?)")re");
    Set(TargetUrlItem::FilePattern, R"re(href="(.+?\.mp3)")re");
    Set(TargetUrlItem::Depth, "1");
  }

  void Set(TargetUrlItem::Field field, const char* value) { job.Edit(field, value); }
  void Check(TargetUrlItem::Field flag) { job.EditFlag(flag, true); }

  // A page whose links are the words of `links`.
  void Page(const char* target, const char* links) {
    QByteArray html;
    for (const QByteArray& link : QByteArray(links).split(' ')) {
      html += "<a href=\"" + link + "\">x</a>\n";
    }
    server.Route(target, Answer::Text(html));
  }

  ListOutcome Generate(bool listOnly = false, const CancelSource& source = {}) {
    const ListOutcome outcome =
        QCoro::waitFor(workspace.generator.Generate(listOnly, source.Token()));
    EXPECT_EQ(activity.Now().phase, zentorin::Phase::Resting);
    EXPECT_EQ(files.rowCount(), files.Count()) << "views know every row at the end";
    return outcome;
  }

  // One column of all rows, joined by blanks; the host "h.test" is written "~".
  QString Column(FileListRow::Column column) const {
    QStringList texts;
    for (int row = 0; row < files.Count(); ++row) texts << files.Row(row)[column];
    return Short(texts.join(u' '));
  }
  QString Links() const { return Column(FileListRow::Link); }
  // All rows, one a line, their columns joined by "|".
  QString Rows() const {
    QStringList rows;
    for (int row = 0; row < files.Count(); ++row) rows << files.Row(row).ToText();
    return Short(rows.join(u'\n').replace(u'\t', u'|'));
  }
  static QString Short(QString text) { return text.replace("http://h.test", "~"); }
};

}  // namespace zentorin::test
