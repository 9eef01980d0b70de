// SPDX-License-Identifier: MIT
#include "app/source_command.h"

#include <gtest/gtest.h>

#include "app/file_list_commands.h"
#include "app/url_list_commands.h"
#include "base/wait.h"
#include "tests/support/fake_workspace.h"
#include "tests/support/loopback_server.h"

namespace zentorin::test {
namespace {

class SourceCommandTest : public testing::Test {
 protected:
  void AddJob(const QString& root) {
    TargetUrlItem job;
    job.Set(TargetUrlItem::Root, root);
    workspace.urlList.InsertBelow(workspace.urlList.Count() - 1, job);
    workspace.urlList.Select(workspace.urlList.Count() - 1);
  }

  LoopbackServer server;
  TempDir home;
  FakeWorkspace w{home, server.ConnectTo()};
  Workspace& workspace = w.workspace;
  QStringList& opened = w.opener.opened;
  UrlListCommands jobs{workspace};
  FileListCommands files{workspace};
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
  EXPECT_FALSE(workspace.board.CancelShown());
  EXPECT_TRUE(w.messages.boxes.empty());
}

TEST_F(SourceCommandTest, SaysOnlyThatAnAddressIsNoGood) {
  FileListRow row;
  row.Set(FileListRow::Link, "none");
  row.Set(FileListRow::BaseDir, "http://sample.test/d");
  workspace.files.Append(row, true);
  const QString status = workspace.board.Status();
  QCoro::waitFor(files.OpenSource());
  EXPECT_EQ(w.messages.Texts(),
            QStringList("|このＵＲＬは無効です。\r\n\r\nhttp://sample.test/d/none"));
  AddJob(QString());
  QCoro::waitFor(jobs.OpenSource());
  EXPECT_EQ(w.messages.Texts().last(), "|このＵＲＬは無効です。\r\n\r\n");
  EXPECT_EQ(workspace.board.Status(), status);
  EXPECT_TRUE(opened.isEmpty());
}

TEST_F(SourceCommandTest, EndsInSilenceWithTheCancelAndCanBeginAgain) {
  server.Route("/slow", Answer::Text("x").Ends(Answer::Ending::Silent));
  server.Route("/fast", Answer::Text("y"));
  SourceCommand& source = workspace.source;
  const auto task = source.Show("http://sample.test/slow");
  EXPECT_TRUE(source.IsRunning());
  EXPECT_TRUE(workspace.board.CancelShown());
  QCoro::waitFor(source.Show("http://sample.test/fast"));
  EXPECT_TRUE(opened.isEmpty()) << "one page at a time";
  QCoro::waitFor(workspace.driver.PowerActionCountdown());
  QCoro::waitFor(YieldToEventLoop());
  EXPECT_TRUE(workspace.board.CancelShown()) << "a run beside it took the button away";
  workspace.driver.CancelCommand();
  QCoro::waitFor(task);
  EXPECT_FALSE(source.IsRunning());
  EXPECT_FALSE(workspace.board.CancelShown());
  EXPECT_EQ(workspace.board.CancelCaption(), "キャンセル");
  EXPECT_TRUE(w.messages.boxes.empty());
  QCoro::waitFor(source.Show("http://sample.test/fast"));
  EXPECT_EQ(opened.size(), 1);
}

TEST_F(SourceCommandTest, GoesOnBesideARunAndLeavesItsCancelButton) {
  server.Route("/fast", Answer::Text("y"));
  server.Route("/slow", Answer::Text("x").Ends(Answer::Ending::Silent));
  AddJob("http://sample.test/slow");
  workspace.job.Edit(TargetUrlItem::FilePattern, "(a)");
  const auto run = workspace.driver.GenerateCommand(false);
  QCoro::waitFor(workspace.source.Show("http://sample.test/fast"));
  EXPECT_EQ(opened.size(), 1);
  EXPECT_TRUE(workspace.driver.IsRunning());
  EXPECT_TRUE(workspace.board.CancelShown());
  workspace.driver.CancelCommand();
  QCoro::waitFor(run);
}

}  // namespace
}  // namespace zentorin::test
