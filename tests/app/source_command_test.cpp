// SPDX-License-Identifier: MIT
#include "app/source_command.h"

#include <gtest/gtest.h>

#include "app/file_list_commands.h"
#include "app/url_list_commands.h"
#include "app/workspace.h"
#include "tests/support/fakes.h"
#include "tests/support/loopback_server.h"
#include "tests/support/temp_dir.h"

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
  SettableClock clock;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  World world{
      .clock = clock, .messages = messages, .opener = opener, .capture = capture, .power = power};
  Workspace workspace{world, home.Path(), server.ConnectTo()};
  UrlListCommands jobs{workspace};
  FileListCommands files{workspace};
};

TEST_F(SourceCommandTest, ShowsThePageOfTodaysRootAddress) {
  server.Route(QStringLiteral("/20240501.html"), Answer::Text("<p>text"));
  QCoro::waitFor(jobs.OpenSource());
  EXPECT_TRUE(opener.opened.isEmpty()) << "no job is selected";
  AddJob(QStringLiteral("http://sample.test/{yyyymmdd}.html"));
  jobs.OpenSite();
  QCoro::waitFor(jobs.OpenSource());
  const QString address = QStringLiteral("http://sample.test/20240501.html");
  EXPECT_EQ(opener.opened, QStringList({QStringLiteral("default:") + address,
                                        QStringLiteral("text:%1:<p>text").arg(address)}));
  EXPECT_FALSE(workspace.board.CancelShown());
  EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(SourceCommandTest, SaysOnlyThatAnAddressIsNoGood) {
  FileListRow row;
  row.Set(FileListRow::Link, QStringLiteral("none"));
  row.Set(FileListRow::BaseDir, QStringLiteral("http://sample.test/d"));
  workspace.files.Append(row, true);
  const QString status = workspace.board.Status();
  QCoro::waitFor(files.OpenSource());
  EXPECT_EQ(
      messages.Texts(),
      QStringList(QStringLiteral("|このＵＲＬは無効です。\r\n\r\nhttp://sample.test/d/none")));
  AddJob(QString());
  QCoro::waitFor(jobs.OpenSource());
  EXPECT_EQ(messages.Texts().last(), QStringLiteral("|このＵＲＬは無効です。\r\n\r\n"));
  EXPECT_EQ(workspace.board.Status(), status);
  EXPECT_TRUE(opener.opened.isEmpty());
}

TEST_F(SourceCommandTest, EndsInSilenceWithTheCancelAndCanBeginAgain) {
  server.Route(QStringLiteral("/slow"), Answer::Text("x").Ends(Answer::Ending::Silent));
  server.Route(QStringLiteral("/fast"), Answer::Text("y"));
  SourceCommand& source = workspace.source;
  const auto task = source.Show(QStringLiteral("http://sample.test/slow"));
  EXPECT_TRUE(source.IsRunning());
  EXPECT_TRUE(workspace.board.CancelShown());
  QCoro::waitFor(source.Show(QStringLiteral("http://sample.test/fast")));
  EXPECT_TRUE(opener.opened.isEmpty()) << "one page at a time";
  workspace.driver.CancelCommand();
  QCoro::waitFor(task);
  EXPECT_FALSE(source.IsRunning());
  EXPECT_FALSE(workspace.board.CancelShown());
  EXPECT_EQ(workspace.board.CancelCaption(), QStringLiteral("キャンセル"));
  EXPECT_TRUE(messages.boxes.empty());
  QCoro::waitFor(source.Show(QStringLiteral("http://sample.test/fast")));
  EXPECT_EQ(opener.opened.size(), 1);
}

TEST_F(SourceCommandTest, GoesOnBesideARunAndLeavesItsCancelButton) {
  server.Route(QStringLiteral("/fast"), Answer::Text("y"));
  server.Route(QStringLiteral("/slow"), Answer::Text("x").Ends(Answer::Ending::Silent));
  AddJob(QStringLiteral("http://sample.test/slow"));
  workspace.job.Edit(TargetUrlItem::FilePattern, QStringLiteral("(a)"));
  const auto run = workspace.driver.GenerateCommand(false);
  QCoro::waitFor(workspace.source.Show(QStringLiteral("http://sample.test/fast")));
  EXPECT_EQ(opener.opened.size(), 1);
  EXPECT_TRUE(workspace.driver.IsRunning());
  EXPECT_TRUE(workspace.board.CancelShown());
  workspace.driver.CancelCommand();
  QCoro::waitFor(run);
}

}  // namespace
}  // namespace zentorin::test
