// SPDX-License-Identifier: MIT
#include "app/auto_run.h"

#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "app/command_line.h"
#include "app/list_lock.h"
#include "app/program_title.h"
#include "tests/support/fake_workspace.h"
#include "tests/support/loopback_server.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// A workspace with an empty list open at 23:30:05, and everything that an armed run says.
class AutoRunTest : public testing::Test {
 protected:
  AutoRunTest() {
    urls.SetCurrentListFile(home.Write("nightly.dat", ""));
    QObject::connect(&run, &AutoRun::TitleChanged,
                     [this](const QString& text) { said.append(text); });
    QObject::connect(&run, &AutoRun::TrayTipChanged, [this](const QString& text) { tip = text; });
    QObject::connect(&run, &AutoRun::MoveToTrayRequested, [this] { said.append("tray"); });
    QObject::connect(&run, &AutoRun::RestoreFromTrayRequested, [this] { said.append("restore"); });
    QObject::connect(&run, &AutoRun::Finished,
                     [this](bool ran) { said.append(ran ? "ran" : "abandoned"); });
  }

  void Arm(const char* commandLine) {
    ASSERT_TRUE(run.Arm(ParseCommandLine(QString::fromUtf8(commandLine))));
  }
  // What the tick at that time of day says.
  QString TickAt(int hour, int minute, int second) {
    w.clock.now.setTime({hour, minute, second});
    said.clear();
    run.Tick();
    return said.join(u'|');
  }
  void TickToTheEnd() {
    run.Tick();
    if (run.CurrentPhase() != AutoRun::Phase::Idle) {
      QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
    }
  }

  TempDir home;
  LoopbackServer server;
  FakeWorkspace w{home, server.ConnectTo()};
  UrlList& urls = w.workspace.urlList;
  RunDriver& driver = w.workspace.driver;
  const StatusBoard& board = w.workspace.board;
  AutoRun run{w.workspace};
  QStringList said;
  QString tip;
};

TEST_F(AutoRunTest, CountsDownInTitleAndTip) {
  Arm("-a 23:30 -tasktray");
  EXPECT_EQ(said, QStringList({"tray"}));
  EXPECT_EQ(TickAt(0, 0, 1), "23:29:59 - 開始までの時間");
  EXPECT_EQ(TickAt(22, 30, 0), "01:00:00 - 開始までの時間");
  EXPECT_EQ(TickAt(22, 30, 1), "59:59 - 開始までの時間");
  EXPECT_EQ(TickAt(23, 29, 59), "00:01 - 開始までの時間");
  EXPECT_EQ(tip, "00:01 - 開始までの時間");
}

TEST_F(AutoRunTest, StartsAtOnceWhenTheTimeHasPassedTodayAndReturnsToRest) {
  for (const char* const line : {"-a 23:30 -tasktray", "-a -tasktray -q"}) {
    said.clear();
    Arm(line);
    TickToTheEnd();
    EXPECT_EQ(said, QStringList({"tray", "ダウンロード実行中", "restore", ProductTitle(), "ran"}));
    EXPECT_EQ(tip, "ダウンロード実行中");
    EXPECT_EQ(home.Read("log.txt"),
              "-- 2024/05/01 23:30:05 ----\r\nStart - \x88\xEA\x8A\x87\r\n"
              "\r\n\r\n");
    EXPECT_FALSE(board.GetStandby().visible);
    EXPECT_FALSE(run.TrayMode());
    EXPECT_TRUE(driver.AfterBatchAction().isEmpty());
  }
  EXPECT_TRUE(w.power.performed.isEmpty());
}

TEST_F(AutoRunTest, ACancelEndsTheCountdownAtOnce) {
  for (const char* const line : {"-a 23:59 -q s -tasktray", "-a -q s -tasktray"}) {
    Arm(line);
    said.clear();
    driver.CancelCommand();
    QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
    EXPECT_EQ(said, QStringList({ProductTitle(), "abandoned"}));
    EXPECT_FALSE(w.workspace.state.CancelRequested());
    EXPECT_EQ(board.CancelCaption(), "キャンセル");
    EXPECT_TRUE(driver.AfterBatchAction().isEmpty());
    EXPECT_EQ(TickAt(23, 30, 5), "") << "nothing is armed any more";
    EXPECT_TRUE(home.Read("log.txt").isNull());
  }
}

TEST_F(AutoRunTest, ACommandBesideTheCountdownLeavesItsButtonUntilItTakesThePresetsWithIt) {
  Arm("-a 23:59 -q");
  said.clear();
  w.messages.answers = {MessageBox::Answer::Cancel};
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_TRUE(board.CancelShown() && board.CancelEnabled());
  EXPECT_EQ(said, QStringList());
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(said, QStringList({ProductTitle(), "abandoned"}));
  EXPECT_FALSE(board.CancelShown());
}

TEST_F(AutoRunTest, ACancelEndsTheCountdownAndTheCommandBesideIt) {
  server.Route("/0", Answer().Ends(Answer::Ending::Silent));
  for (int job = 0; job < 2; ++job) {
    TargetUrlItem item;
    item.Set(TargetUrlItem::Root, u"http://site.test/%1"_s.arg(job));
    item.Set(TargetUrlItem::FilePattern, "(a)");
    urls.InsertBelow(job - 1, item);
  }
  Arm("-a 23:59");
  QObject::connect(&run, &AutoRun::Finished, [this] {
    EXPECT_TRUE(driver.IsRunning() && board.CancelShown()) << "the command unwinds behind it";
  });
  const auto command = driver.DownloadCommand(true);
  driver.CancelCommand();
  QCoro::waitFor(command);
  EXPECT_EQ(said, QStringList({ProductTitle(), "abandoned"}));
  EXPECT_EQ(server.Hits("/1"), 0);
  EXPECT_FALSE(board.CancelShown() || w.workspace.state.CancelRequested());
}

TEST_F(AutoRunTest, KeepsOtherRunsOffTheListThatIsOpenWhenItRuns) {
  const QString nightly = urls.CurrentListFile();
  const QString opened = home.Write("opened.dat", "");
  ListLock other;
  Arm("-a");
  EXPECT_FALSE(other.Acquire(nightly, home.Path()));
  urls.SetCurrentListFile(opened);
  const auto watch = QObject::connect(&run, &AutoRun::TrayTipChanged, [&] {
    EXPECT_TRUE(other.Acquire(nightly, home.Path()));
    EXPECT_FALSE(other.Acquire(opened, home.Path()));
  });
  TickToTheEnd();
  QObject::disconnect(watch);

  ASSERT_TRUE(other.Acquire(opened, home.Path())) << "at rest nothing is held";
  EXPECT_FALSE(run.Arm(CommandLine()));
  urls.SetCurrentListFile(nightly);
  Arm("-a");
  urls.SetCurrentListFile(opened);
  said.clear();
  TickToTheEnd();
  EXPECT_EQ(w.messages.Texts(), QStringList("エラー発生|" + ListInUseText(opened)));
  EXPECT_EQ(said, QStringList({ProductTitle(), "abandoned"}));
  EXPECT_FALSE(board.CancelShown());
}

}  // namespace
}  // namespace zentorin::test
