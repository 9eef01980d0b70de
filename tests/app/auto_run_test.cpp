// SPDX-License-Identifier: MIT
#include "app/auto_run.h"

#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "app/command_line.h"
#include "app/program_title.h"
#include "app/workspace.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

// A workspace with an empty list open at 23:30:05, and everything that an armed run says.
class AutoRunTest : public testing::Test {
 protected:
  AutoRunTest() {
    workspace.urlList.SetCurrentListFile(home.Write("nightly.dat", ""));
    QObject::connect(&run, &AutoRun::TitleChanged,
                     [this](const QString& text) { said.append(text); });
    QObject::connect(&run, &AutoRun::TrayTipChanged, [this](const QString& text) { tip = text; });
    QObject::connect(&run, &AutoRun::MoveToTrayRequested,
                     [this] { said.append(QStringLiteral("tray")); });
    QObject::connect(&run, &AutoRun::RestoreFromTrayRequested,
                     [this] { said.append(QStringLiteral("restore")); });
    QObject::connect(&run, &AutoRun::Finished, [this](bool ran) {
      said.append(ran ? QStringLiteral("ran") : QStringLiteral("abandoned"));
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
    if (run.CurrentPhase() != AutoRun::Phase::Idle) {
      QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
    }
  }

  TempDir home;
  SettableClock clock;
  RecordingMessageBoxes messages;
  RecordingOpener opener;
  FakeStreamCapture capture;
  RecordingPowerControl power;
  World world{
      .clock = clock, .messages = messages, .opener = opener, .capture = capture, .power = power};
  Workspace workspace{world, home.Path(), QString()};
  AutoRun run{workspace};
  QStringList said;
  QString tip;
};

TEST_F(AutoRunTest, CountsDownInTitleAndTip) {
  Arm("-a 23:30 -tasktray");
  EXPECT_EQ(said, QStringList({QStringLiteral("tray")}));
  EXPECT_EQ(TickAt(0, 0, 1), QStringLiteral("23:29:59 - 開始までの時間"));
  EXPECT_EQ(TickAt(22, 30, 0), QStringLiteral("01:00:00 - 開始までの時間"));
  EXPECT_EQ(TickAt(22, 30, 1), QStringLiteral("59:59 - 開始までの時間"));
  EXPECT_EQ(TickAt(23, 29, 59), QStringLiteral("00:01 - 開始までの時間"));
  EXPECT_EQ(tip, QStringLiteral("00:01 - 開始までの時間"));
}

TEST_F(AutoRunTest, StartsAtOnceWhenTheTimeHasPassedTodayAndReturnsToRest) {
  for (const char* const line : {"-a 23:30 -tasktray", "-a -tasktray -q"}) {
    said.clear();
    Arm(line);
    TickToTheEnd();
    EXPECT_EQ(said,
              QStringList({QStringLiteral("tray"), QStringLiteral("ダウンロード実行中"),
                           QStringLiteral("restore"), ProductTitle(), QStringLiteral("ran")}));
    EXPECT_EQ(tip, QStringLiteral("ダウンロード実行中"));
    EXPECT_EQ(home.Read("log.txt"),
              "-- 2024/05/01 23:30:05 ----\r\nStart - \x88\xEA\x8A\x87\r\n"
              "\r\n\r\n");
    EXPECT_FALSE(workspace.board.GetStandby().visible);
    EXPECT_FALSE(run.TrayMode());
    EXPECT_TRUE(workspace.driver.AfterBatchAction().isEmpty());
  }
  EXPECT_TRUE(power.performed.isEmpty());
}

TEST_F(AutoRunTest, ACancelEndsTheCountdownAtOnce) {
  Arm("-a 23:59 -q s -tasktray");
  said.clear();
  workspace.driver.CancelCommand();
  QCoro::waitFor(qCoro(&run, &AutoRun::Finished));
  EXPECT_EQ(said, QStringList({ProductTitle(), QStringLiteral("abandoned")}));
  EXPECT_FALSE(workspace.state.CancelRequested());
  EXPECT_EQ(workspace.board.CancelCaption(), QStringLiteral("キャンセル"));
  EXPECT_TRUE(workspace.driver.AfterBatchAction().isEmpty());
  EXPECT_EQ(TickAt(23, 59, 0), QString()) << "nothing is armed any more";
  EXPECT_TRUE(home.Read("log.txt").isNull());
}

TEST_F(AutoRunTest, ASecondRunOnTheSameListIsRefusedUntilTheFirstHasEnded) {
  Arm("-a");
  AutoRun second(workspace);
  EXPECT_FALSE(second.Arm(CommandLine()));
  TickToTheEnd();
  EXPECT_TRUE(second.Arm(CommandLine()));
}

}  // namespace
}  // namespace zentorin::test
