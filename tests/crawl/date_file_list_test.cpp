// SPDX-License-Identifier: MIT
#include "crawl/date_file_list.h"

#include <gtest/gtest.h>

#include "base/display_clock.h"
#include "crawl/file_list.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "tests/support/fakes.h"

namespace zentorin::test {
namespace {

// A list of two jobs; the second one is a date-format job.
class DateFileListTest : public testing::Test {
 protected:
  DateFileListTest() {
    TargetUrlItem dated;
    dated.Set(TargetUrlItem::Format, "http://h/{yyyy-mm}/a{yyyymmdd}.mp3");
    dated.Set(TargetUrlItem::Before, "1,0");
    dated.Set(TargetUrlItem::Opt, "1");
    urlList_.ReplaceAll({TargetUrlItem().ToLine(), dated.ToLine()});
  }

  // The days of the addresses.
  QString Days() const {
    QStringList days;
    for (int row = 0; row < files_.Count(); ++row) {
      EXPECT_EQ(files_.Row(row)[FileListRow::Link], files_.Row(row)[FileListRow::Address]);
      days << files_.Row(row)[FileListRow::Link].section(u'/', -1).mid(5, 4);
    }
    return days.join(u' ');
  }

  SettableClock time_{QDateTime({2011, 5, 15}, {8, 0, 0}, Qt::UTC)};
  ClockOptions options_;
  DisplayClock shown_{time_, options_};
  UrlList urlList_;
  JobEditor job_{urlList_};
  FileList files_;
  DateFileList dateFiles_{job_, files_, time_, shown_};
};

TEST_F(DateFileListTest, ListsTheDaysOfTheWindowOldestFirst) {
  urlList_.Select(1);
  EXPECT_EQ(Days(), "0514 0515");
  EXPECT_EQ(files_.Row(1).ToText(),
            "\t\t\thttp://h/2011-05/a20110515.mp3\t\t\t"
            "http://h/2011-05/a20110515.mp3");
  EXPECT_EQ(files_.SelectedCount(), 2);
  EXPECT_EQ(job_.BeforeDate(), "2011/05/15～2011/05/14");
}

TEST_F(DateFileListTest, FollowsEditsOfFormatAndWindow) {
  urlList_.Select(1);
  job_.EditBefore(0, "3");
  EXPECT_EQ(Days(), "0512 0513 0514 0515");
  job_.EditBefore(1, QString());
  EXPECT_EQ(Days(), "0512") << "one day when the second end is empty";
  job_.Edit(TargetUrlItem::Format, "plain");
  EXPECT_EQ(files_.Row(0)[FileListRow::Address], "plain");
  job_.EditBefore(0, QString());
  EXPECT_EQ(files_.Count(), 0);
  EXPECT_EQ(job_.BeforeDate(), QString());
  job_.EditBefore(0, "1");
  job_.Edit(TargetUrlItem::Format, QString());
  EXPECT_EQ(files_.Count(), 0);
  EXPECT_EQ(job_.BeforeDate(), "2011/05/14～2011/05/14");
}

TEST_F(DateFileListTest, CountsBackFromTheShownClock) {
  options_.useGmt = true;
  urlList_.Select(1);
  EXPECT_EQ(Days(), "0513 0514") << "in GMT it is still the day before";
  EXPECT_EQ(job_.BeforeDate(), "2011/05/15～2011/05/14")
      << "the label counts from the computer's own day";
}

TEST_F(DateFileListTest, LeavesTheListOfAPatternJobAlone) {
  urlList_.Select(1);
  urlList_.Select(0);
  EXPECT_EQ(files_.Count(), 2);
  job_.Edit(TargetUrlItem::Format, "x");
  EXPECT_EQ(files_.Count(), 2);
  EXPECT_EQ(job_.BeforeDate(), QString());
}

}  // namespace
}  // namespace zentorin::test
