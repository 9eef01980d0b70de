// SPDX-License-Identifier: MIT
#include "app/auto_run.h"

#include <QCoro/QCoroSignal>

#include "app/closing.h"
#include "app/command_line.h"
#include "app/list_lock.h"
#include "app/program_title.h"
#include "tests/support/workspace_test.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

// A workspace with an empty list open at 23:30:05, and everything that an armed run says.
class AutoRunTest : public WorkspaceTest {
 protected:
  AutoRunTest() {
    urlList.SetCurrentListFile(home.Write("nightly.dat", ""));
    QObject::connect(&run, &AutoRun::TitleChanged,
                     [this](const QString& text) { said.append(text); });
    QObject::connect(&run, &AutoRun::TrayTipChanged, [this](const QString& text) { tip = text; });
    QObject::connect(&run, &AutoRun::MoveToTrayRequested, [this] { said.append("tray"); });
    QObject::connect(&run, &AutoRun::RestoreFromTrayRequested, [this] { said.append("restore"); });
    QObject::connect(&run, &AutoRun::Finished, [this](const RunOutcome& outcome) {
      said.append("status " + QString::number(ExitStatusOf(outcome)));
    });
  }

  void Arm(const char* commandLine) {
    ASSERT_TRUE(run.Arm(ParseCommandLine(QString::fromUtf8(commandLine))));
  }
  // What the tick at that time of day says.
  QString TickAt(int hour, int minute, int second) {
    clock.now.setTime({hour, minute, second});
    said.clear();
    run.Tick();
    return said.join(u'|');
  }
  void TickToTheEnd() {
    run.Tick();
    if (run.CurrentState() != AutoRun::State::Idle) {
      QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
    }
  }

  AutoRun run{workspace};
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
    EXPECT_EQ(said,
              QStringList({"tray", "ダウンロード実行中", "restore", ProductTitle(), "status 0"}));
    EXPECT_EQ(tip, "ダウンロード実行中");
    EXPECT_EQ(home.Read("log.txt").count("Start"), 1);
    EXPECT_FALSE(activity.Now().afterBatch.offered);
    EXPECT_FALSE(run.TrayMode());
    EXPECT_TRUE(driver.AfterBatchAction().isEmpty());
  }
}

TEST_F(AutoRunTest, ACancelOrADownloadThatIsAgreedToEndsTheCountdownWithItsPresets) {
  using Case = std::pair<const char*, bool>;
  for (const auto& [line, byDownload] : {Case("-a 23:59 -q s -tasktray", false),
                                         Case("-a -q s", false), Case("-a 23:59 -q", true)}) {
    Arm(line);
    said.clear();
    if (!byDownload) {
      CancelWork(workspace, run);
    } else {
      messages.answers = {MessageBox::Answer::Cancel};
      QCoro::waitFor(driver.DownloadCommand(true));
      EXPECT_EQ(activity.Now().phase, Phase::Armed);
      EXPECT_EQ(said, QStringList());
      QCoro::waitFor(driver.DownloadCommand(true));
    }
    EXPECT_EQ(said, QStringList({ProductTitle(), "status 130"}));
    EXPECT_EQ(activity.Now().phase, Phase::Resting);
    EXPECT_TRUE(driver.AfterBatchAction().isEmpty());
    EXPECT_EQ(TickAt(23, 30, 5), "") << "nothing is armed any more";
  }
}

TEST_F(AutoRunTest, ACancelledCrawlLeavesTheStartTimeArmed) {
  server.Route("/", Answer().Ends(Answer::Ending::Silent));
  TargetUrlItem item;
  item.Set(TargetUrlItem::Root, "http://site.test/");
  item.Set(TargetUrlItem::FilePattern, "(a)");
  urlList.InsertBelow(-1, item);
  urlList.Select(0);
  Arm("-a 23:59");
  const auto command = driver.GenerateCommand(false);
  EXPECT_EQ(activity.Now().phase, Phase::Listing);
  CancelWork(workspace, run);
  QCoro::waitFor(command);
  EXPECT_EQ(activity.Now().phase, Phase::Armed);
  EXPECT_EQ(TickAt(23, 58, 59), "00:01 - 開始までの時間");
  CancelWork(workspace, run);
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
}

TEST_F(AutoRunTest, KeepsOtherRunsOffTheListThatIsOpenWhenItRuns) {
  const QString nightly = urlList.CurrentListFile();
  const QString opened = home.Write("opened.dat", "");
  RunLock other;
  Arm("-a");
  EXPECT_FALSE(other.Acquire(nightly, home.Path()));
  urlList.SetCurrentListFile(opened);
  const auto watch = QObject::connect(&run, &AutoRun::TrayTipChanged, [&] {
    EXPECT_TRUE(other.Acquire(nightly, home.Path()));
    EXPECT_FALSE(other.Acquire(opened, home.Path()));
  });
  TickToTheEnd();
  QObject::disconnect(watch);

  ASSERT_TRUE(other.Acquire(opened, home.Path())) << "at rest nothing is held";
  EXPECT_FALSE(run.Arm(CommandLine()));
  urlList.SetCurrentListFile(nightly);
  Arm("-a");
  urlList.SetCurrentListFile(opened);
  said.clear();
  TickToTheEnd();
  EXPECT_EQ(messages.Texts(), QStringList("エラー発生|" + ListInUseText(opened)));
  EXPECT_EQ(said, QStringList({ProductTitle(), "status 1"}));
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
}

}  // namespace
}  // namespace zentorin::test
