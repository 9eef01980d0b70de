// SPDX-License-Identifier: MIT
#include "download/run_driver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;

class RunDriverTest : public test::DownloadTest {
 protected:
  RunDriverTest() {
    driver.SetCountdownStep(std::chrono::milliseconds(1));
    QObject::connect(&driver, &RunDriver::CloseRequested, [this] {
      ++closeRequests;
      EXPECT_FALSE(driver.IsRunning());
    });
    Page(0, "http://site.test/dir/index.html");
    server.Route("/dir/index.html", Answer::Text("<a href=\"one.mp3\">1</a>"));
    server.Route("/dir/one.mp3", Answer::Text("1"));
    server.Route("/cut.mp3", Answer::Text("333").Ends(Answer::Ending::CutOff, 1));
  }

  // A job whose root page links to "/name.mp3".
  void Page(int row, const char* root) {
    urlList.Select(row);
    job.Edit(TargetUrlItem::Root, root);
    job.Edit(TargetUrlItem::FilePattern, "href=\"(.+?\\.mp3)\"");
    job.Edit(TargetUrlItem::Depth, "0");
  }
  void AddPage(const char* name, const char* root) {
    AddJob(name, root);
    Page(urlList.Count() - 1, root);
  }

  void Standby(bool checked) {
    StatusBoard::Standby standby = board.GetStandby();
    standby.checked = checked;
    board.SetStandby(standby);
  }

  RunDriver driver{context, urlList, generator, power};
  int closeRequests = 0;
};

TEST_F(RunDriverTest, TheBatchRunsEveryJobThatIsNotSkippedAndLogsThem) {
  server.Route("/three.html", Answer::Text("<a href=\"/cut.mp3\">3</a>"));
  AddPage("skipped", "http://site.test/two.html");
  job.EditFlag(TargetUrlItem::Skip, true);
  AddPage("failing", "http://site.test/three.html");
  home.Write("log.txt", "an old log");
  QList<int> selected;
  QObject::connect(&urlList, &UrlList::Selected, [&](int row) { selected.append(row); });
  QObject::connect(&driver, &RunDriver::JobStarted, [&] { EXPECT_EQ(power.holds, 1); });
  QObject::connect(&board, &StatusBoard::ProgressChanged,
                   [&] { EXPECT_TRUE(board.Busy() || !driver.IsRunning()); });
  QCoro::waitFor(driver.Drive(true));

  EXPECT_EQ(selected, QList<int>({0, 1, 2}));
  EXPECT_EQ(server.Hits("/two.html"), 0);
  const QByteArray header = "-- 2024/05/01 23:30:05 ----\r\n";
  const QByteArray end = "\r\n\r\n\r\n";
  EXPECT_EQ(home.Read("log.txt"),
            header + "Start - \x88\xea\x8a\x87" + end + header +
                "< daily >\r\n\r\n  o Complete\r\n    http://site.test/dir/one.mp3\r\n\r\n" + end +
                header + "< failing >\r\n\r\n  x Error 57\r\n    http://site.test/cut.mp3\r\n\r\n" +
                end);
  EXPECT_EQ(home.Read("save/one.mp3"), "1");
  EXPECT_EQ(board.Status(), "異常終了");
  EXPECT_EQ(power.holds, 0);
  EXPECT_FALSE(board.Busy());
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_FALSE(driver.WasCancelled());
  EXPECT_EQ(capture.lookUps, 1);
  EXPECT_EQ(state.RunMode(), QString());
}

TEST_F(RunDriverTest, ACancelAtAnyMomentEndsTheBatch) {
  AddPage("next", "http://site.test/next.html");
  QString moment;
  QObject::connect(&server, &test::LoopbackServer::RequestReceived, [&](const QString& target) {
    if (target == moment) driver.CancelCommand();
  });
  for (const char* target : {"/dir/index.html", "/dir/one.mp3"}) {
    moment = target;
    state.ClearCancel();
    QCoro::waitFor(driver.Drive(true));
    EXPECT_EQ(urlList.SelectedRow(), 0) << target;
    EXPECT_EQ(server.Hits("/next.html"), 0) << target;
    EXPECT_TRUE(driver.WasCancelled()) << target;
    EXPECT_FALSE(QFileInfo::exists(home.Path("save/one.mp3"))) << target;
    EXPECT_EQ(board.CancelCaption(), "キャンセル") << target;
  }
}

TEST_F(RunDriverTest, AFatalErrorEndsTheBatchWithoutBeingACancel) {
  AddPage("next", "http://site.test/next.html");
  home.Write("save", "in the way");
  QCoro::waitFor(driver.Drive(true));
  EXPECT_EQ(server.Hits("/next.html"), 0);
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_FALSE(driver.WasCancelled());
}

TEST_F(RunDriverTest, AJobWithoutARootDoesNotTakeTheRowsOfAnother) {
  Add("http://site.test/stale");
  urlList.Select(0);
  job.Edit(TargetUrlItem::Root, {});
  QCoro::waitFor(driver.Drive(true));
  EXPECT_EQ(server.Hits("/stale"), 0);
  EXPECT_TRUE(driver.AnyFailure());
}

TEST_F(RunDriverTest, ALogThatCannotBeWrittenEndsTheRunBeforeAnyDownload) {
  QDir(home.Path()).mkdir("log.txt");
  Add("http://site.test/a");
  QCoro::waitFor(driver.Drive(false));
  EXPECT_TRUE(server.Requests().isEmpty());
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_EQ(board.Status(), QString());
  EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(RunDriverTest, ASingleRunOpensItsLogOnErrors) {
  options.autoClose = true;
  Add("http://site.test/dir/one.mp3");
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(board.Status(), "処理終了");
  EXPECT_EQ(board.FileCount(), "1");
  EXPECT_TRUE(opener.opened.isEmpty());
  EXPECT_EQ(closeRequests, 1);
  Add("http://site.test/cut.mp3");
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(opener.opened, QStringList("default:" + log.Path()));
  EXPECT_TRUE(messages.boxes.empty()) << "no confirmation";
}

TEST_F(RunDriverTest, TheBatchAsksFirstAndKeepsTheWindowOnANo) {
  options.autoClose = true;
  messages.answers = {MessageBox::Answer::Cancel};
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(messages.Texts(), QStringList("一括ダウンロード|全てのＵＲＬリストから一括ダウンロード"
                                          "します。よろしいですか？"));
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(closeRequests, 0);
}

TEST_F(RunDriverTest, ThePresetActionIsPerformedAfterTheCountdown) {
  job.EditFlag(TargetUrlItem::Skip, true);
  driver.SetAfterBatchAction("シャットダウン");
  QString toolTip;
  QStringList shown;
  QObject::connect(&board, &StatusBoard::ProgressChanged, [&] {
    if (board.GetStandby().checked) toolTip = board.GetStandby().toolTip;
    if (!board.File().isEmpty() && !shown.contains(board.File())) shown.append(board.File());
  });
  power.refusal = "できません。";
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(power.performed, QStringList("シャットダウン"));
  EXPECT_EQ(toolTip, "一括ダウンロード終了後にＰＣを「シャットダウン」状態にします。");
  EXPECT_EQ(shown.size(), 50);
  EXPECT_EQ(shown.value(0) + shown.value(49), "4.90.0");
  EXPECT_EQ(board.Status(), "できません。");
  EXPECT_EQ(closeRequests, 1);
  EXPECT_EQ(driver.AfterBatchAction(), QString());
  EXPECT_FALSE(board.GetStandby().checked || board.GetStandby().visible || board.CancelShown());
}

TEST_F(RunDriverTest, TheCountdownStopsForACancelAndForAnUncheckedBox) {
  driver.SetCountdownStep(std::chrono::hours(1));
  Standby(true);
  QTimer::singleShot(0, &driver, &RunDriver::CancelCommand);
  QCoro::waitFor(driver.PowerActionCountdown());
  EXPECT_TRUE(driver.WasCancelled());
  EXPECT_EQ(board.Status(), QString());
  state.ClearCancel();
  driver.SetCountdownStep(std::chrono::milliseconds(1));
  QTimer::singleShot(0, &driver, [this] { Standby(false); });
  QCoro::waitFor(driver.PowerActionCountdown());
  EXPECT_EQ(power.performed, QStringList());
  EXPECT_EQ(closeRequests, 0);
  driver.SetAfterBatchAction("閉じる");
  QCoro::waitFor(driver.PowerActionCountdown());
  EXPECT_EQ(closeRequests, 1) << "a preset action ends the program without the box, too";
}

TEST_F(RunDriverTest, GeneratingClearsAStaleCancelAndHidesTheButton) {
  state.RequestCancel();
  bool shown = false;
  QObject::connect(&board, &StatusBoard::Changed,
                   [&] { shown = shown || (board.CancelShown() && board.CancelEnabled()); });
  QCoro::Task<void> first = driver.GenerateCommand(false);
  QCoro::waitFor(driver.GenerateCommand(false));
  EXPECT_TRUE(driver.IsRunning()) << "a second command is refused";
  EXPECT_EQ(board.Status(), "処理中です。終了を待つか、キャンセルしてください。");
  QCoro::waitFor(first);
  EXPECT_EQ(files.Count(), 1);
  EXPECT_EQ(board.FileCount(), "1");
  EXPECT_TRUE(shown);
  EXPECT_FALSE(board.CancelShown());
}

}  // namespace
}  // namespace zentorin
