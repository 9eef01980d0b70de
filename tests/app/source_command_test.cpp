// SPDX-License-Identifier: MIT
#include "app/source_command.h"

#include "app/file_list_commands.h"
#include "app/url_list_commands.h"
#include "tests/support/workspace_test.h"

namespace zentorin::test {
namespace {

class SourceCommandTest : public WorkspaceTest {
 protected:
  void AddJob(const QString& root) {
    TargetUrlItem item;
    item.Set(TargetUrlItem::Root, root);
    urlList.InsertBelow(urlList.Count() - 1, item);
    urlList.Select(urlList.Count() - 1);
  }

  SourceCommand& source = workspace.source;
  QStringList& opened = opener.opened;
  UrlListCommands jobs{workspace};
  FileListCommands rows{workspace};
};

TEST_F(SourceCommandTest, ShowsThePageOfTodaysRootAddress) {
  server.Route("/20240501.html", Answer::Text("<p>text"));
  QCoro::waitFor(jobs.OpenSource());
  EXPECT_TRUE(opened.isEmpty()) << "no job is selected";
  AddJob("http://sample.test/{yyyymmdd}.html");
  jobs.OpenSite();
  QCoro::waitFor(jobs.OpenSource());
  const QString address = "http://sample.test/20240501.html";
  EXPECT_EQ(opened, QStringList({"default:" + address, "text:" + address + ":<p>text"}));
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(SourceCommandTest, SaysOnlyThatAnAddressIsNoGood) {
  FileListRow row;
  row.Set(FileListRow::Link, "none");
  row.Set(FileListRow::BaseDir, "http://sample.test/d");
  files.Append(row, true);
  QCoro::waitFor(rows.OpenSource());
  EXPECT_EQ(messages.Texts(),
            QStringList("|このＵＲＬは無効です。\r\n\r\nhttp://sample.test/d/none"));
  AddJob(QString());
  QCoro::waitFor(jobs.OpenSource());
  EXPECT_EQ(messages.Texts().last(), "|このＵＲＬは無効です。\r\n\r\n");
  EXPECT_EQ(activity.Now().said, 0);
  EXPECT_TRUE(opened.isEmpty());
}

TEST_F(SourceCommandTest, OnePageIsFetchedAtATimeAlsoBesideARunUntilTheCancel) {
  const QString fast = "http://sample.test/fast";
  const QString slow = "http://sample.test/slow";
  server.Route("/slow", Answer::Text("x").Ends(Answer::Ending::Silent));
  server.Route("/fast", Answer::Text("y"));
  const auto task = source.Show(slow);
  QCoro::waitFor(source.Show(fast));
  EXPECT_TRUE(opened.isEmpty());
  QCoro::waitFor(driver.BatchCommand());
  EXPECT_EQ(activity.Now().phase, Phase::FetchingPage) << "a run beside it changes nothing";
  source.Cancel();
  QCoro::waitFor(task);
  EXPECT_FALSE(source.IsRunning());
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
  EXPECT_TRUE(messages.boxes.empty());

  AddJob(slow);
  job.Edit(TargetUrlItem::FilePattern, "(a)");
  const auto run = driver.GenerateCommand(false);
  QCoro::waitFor(source.Show(fast));
  EXPECT_EQ(opened.size(), 1);
  EXPECT_EQ(activity.Now().phase, Phase::Listing);
  driver.CancelCommand();
  QCoro::waitFor(run);
}

}  // namespace
}  // namespace zentorin::test
