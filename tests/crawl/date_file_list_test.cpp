// SPDX-License-Identifier: MIT
#include "crawl/date_file_list.h"

#include "tests/support/workspace_test.h"

namespace zentorin::test {
namespace {

// A list of two jobs; the second one is a date-format job.
class DateFileListTest : public WorkspaceTest {
 protected:
  DateFileListTest() {
    TargetUrlItem dated;
    dated.Set(TargetUrlItem::Format, "http://h/{yyyy-mm}/a{yyyymmdd}.mp3");
    dated.Set(TargetUrlItem::Before, "1,0");
    dated.Set(TargetUrlItem::Opt, "1");
    urlList.InsertBelow(-1, TargetUrlItem());
    urlList.InsertBelow(0, dated);
    clock.now = QDateTime({2011, 5, 15}, {8, 0, 0}, Qt::UTC);
    urlList.Select(1);
  }

  // The days of the addresses.
  QString Days() const {
    QStringList days;
    for (int row = 0; row < files.Count(); ++row) {
      EXPECT_EQ(files.Row(row)[FileListRow::Link], files.Row(row)[FileListRow::Address]);
      days << files.Row(row)[FileListRow::Link].section(u'/', -1).mid(5, 4);
    }
    return days.join(u' ');
  }
};

TEST_F(DateFileListTest, ListsTheDaysOfTheWindowOldestFirstAndFollowsEdits) {
  EXPECT_EQ(Days(), "0514 0515");
  EXPECT_EQ(files.Row(1).ToText(),
            "\t\t\thttp://h/2011-05/a20110515.mp3\t\t\thttp://h/2011-05/a20110515.mp3");
  EXPECT_EQ(files.SelectedCount(), 2);
  EXPECT_EQ(job.BeforeDate(), "2011/05/15～2011/05/14");
  job.EditBefore(0, "3");
  EXPECT_EQ(Days(), "0512 0513 0514 0515");
  job.EditBefore(1, QString());
  EXPECT_EQ(Days(), "0512") << "one day when the second end is empty";
  job.Edit(TargetUrlItem::Format, "plain");
  EXPECT_EQ(files.Row(0)[FileListRow::Address], "plain");
  job.EditBefore(0, QString());
  EXPECT_EQ(files.Count(), 0);
  EXPECT_EQ(job.BeforeDate(), QString());
  job.EditBefore(0, "1");
  job.Edit(TargetUrlItem::Format, QString());
  EXPECT_EQ(files.Count(), 0);
  EXPECT_EQ(job.BeforeDate(), "2011/05/14～2011/05/14");
}

TEST_F(DateFileListTest, CountsBackFromTheShownClockAndLeavesTheListOfAPatternJobAlone) {
  workspace.settings.clock.useGmt = true;
  urlList.Select(1);
  EXPECT_EQ(Days(), "0513 0514") << "in GMT it is still the day before";
  EXPECT_EQ(job.BeforeDate(), "2011/05/15～2011/05/14")
      << "the label counts from the computer's own day";
  urlList.Select(0);
  job.Edit(TargetUrlItem::Format, "x");
  EXPECT_EQ(files.Count(), 2);
  EXPECT_EQ(job.BeforeDate(), QString());
}

}  // namespace
}  // namespace zentorin::test
