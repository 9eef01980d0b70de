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
  }

  // A job whose root page links to "/name.mp3".
  void Page(int row, const char* root) {
    urlList.Select(row);
    job.Edit(TargetUrlItem::Root, QString::fromUtf8(root));
    job.Edit(TargetUrlItem::FilePattern, QStringLiteral("href=\"(.+?\\.mp3)\""));
    job.Edit(TargetUrlItem::Depth, QStringLiteral("0"));
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

  CrawlContext crawl{http, state, board, messages, shownClock, clockOptions, urlList, job, files};
  FileListGenerator generator{crawl};
  RunDriver driver{context, urlList, generator, power};
  int closeRequests = 0;
};

TEST_F(RunDriverTest, TheBatchRunsEveryJobThatIsNotSkippedAndLogsThem) {
  server.Route(QStringLiteral("/dir/index.html"), Answer::Text("<a href=\"one.mp3\">1</a>"));
  server.Route(QStringLiteral("/dir/one.mp3"), Answer::Text("1"));
  server.Route(QStringLiteral("/three.html"), Answer::Text("<a href=\"cut.mp3\">3</a>"));
  server.Route(QStringLiteral("/cut.mp3"), Answer::Text("333").Ends(Answer::Ending::CutOff, 1));
  AddPage("skipped", "http://site.test/two.html");
  job.EditFlag(TargetUrlItem::Skip, true);
  AddPage("failing", "http://site.test/three.html");
  home.Write(QStringLiteral("log.txt"), "an old log");
  QList<int> selected;
  QObject::connect(&urlList, &UrlList::Selected, [&](int row) { selected.append(row); });
  bool alwaysBusy = true;
  bool alwaysAwake = true;
  QObject::connect(&driver, &RunDriver::JobStarted,
                   [&] { alwaysAwake = alwaysAwake && power.holds == 1; });
  QObject::connect(&board, &StatusBoard::ProgressChanged,
                   [&] { alwaysBusy = alwaysBusy && (board.Busy() || !driver.IsRunning()); });
  QCoro::waitFor(driver.Drive(true));

  EXPECT_EQ(selected, QList<int>({0, 1, 2}));
  EXPECT_EQ(server.Hits(QStringLiteral("/two.html")), 0);
  const QByteArray header = "-- 2024/05/01 23:30:05 ----\r\n";
  const QByteArray end = "\r\n\r\n\r\n";
  EXPECT_EQ(home.Read(QStringLiteral("log.txt")),
            header + "Start - \x88\xea\x8a\x87" + end + header +
                "< daily >\r\n\r\n  o Complete\r\n    http://site.test/dir/one.mp3\r\n\r\n" + end +
                header + "< failing >\r\n\r\n  x Error 57\r\n    http://site.test/cut.mp3\r\n\r\n" +
                end);
  EXPECT_EQ(home.Read(QStringLiteral("save/one.mp3")), "1");
  EXPECT_EQ(board.Status(), QStringLiteral("異常終了"));
  EXPECT_TRUE(alwaysBusy);
  EXPECT_TRUE(alwaysAwake);
  EXPECT_EQ(power.holds, 0);
  EXPECT_FALSE(board.Busy());
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_FALSE(driver.WasCancelled());
  EXPECT_EQ(capture.lookUps, 1);
  EXPECT_EQ(state.RunMode(), QString());
}

TEST_F(RunDriverTest, ACancelAtAnyMomentEndsTheBatch) {
  for (const char* moment : {"/dir/index.html", "/dir/one.mp3"}) {
    QString target = QString::fromUtf8(moment);
    server.RouteTo(QStringLiteral("/dir/index.html"), [this, target](const auto& request) {
      if (request.target == target) driver.CancelCommand();
      return Answer::Text("<a href=\"one.mp3\">1</a>");
    });
    server.RouteTo(QStringLiteral("/dir/one.mp3"), [this, target](const auto& request) {
      if (request.target == target) driver.CancelCommand();
      return Answer::Text("1");
    });
    if (urlList.Count() == 1) AddPage("next", "http://site.test/next.html");
    state.ClearCancel();
    QCoro::waitFor(driver.Drive(true));
    EXPECT_EQ(urlList.SelectedRow(), 0) << moment;
    EXPECT_EQ(server.Hits(QStringLiteral("/next.html")), 0) << moment;
    EXPECT_TRUE(driver.WasCancelled()) << moment;
    EXPECT_FALSE(QFileInfo::exists(home.Path(QStringLiteral("save/one.mp3")))) << moment;
    EXPECT_EQ(board.CancelCaption(), QStringLiteral("キャンセル")) << moment;
  }
}

TEST_F(RunDriverTest, AFatalErrorEndsTheBatchWithoutBeingACancel) {
  server.Route(QStringLiteral("/dir/index.html"), Answer::Text("<a href=\"one.mp3\">1</a>"));
  AddPage("next", "http://site.test/next.html");
  home.Write(QStringLiteral("save"), "in the way");
  QCoro::waitFor(driver.Drive(true));
  EXPECT_EQ(server.Hits(QStringLiteral("/next.html")), 0);
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_FALSE(driver.WasCancelled());
}

TEST_F(RunDriverTest, AJobWithoutARootDoesNotTakeTheRowsOfAnother) {
  Add(QStringLiteral("http://site.test/stale"));
  urlList.Select(0);
  job.Edit(TargetUrlItem::Root, {});
  QCoro::waitFor(driver.Drive(true));
  EXPECT_EQ(server.Hits(QStringLiteral("/stale")), 0);
  EXPECT_TRUE(driver.AnyFailure());
}

TEST_F(RunDriverTest, ALogThatCannotBeWrittenEndsTheRunBeforeAnyDownload) {
  QDir(home.Path()).mkdir(QStringLiteral("log.txt"));
  Add(QStringLiteral("http://site.test/a"));
  QCoro::waitFor(driver.Drive(false));
  EXPECT_TRUE(server.Requests().isEmpty());
  EXPECT_TRUE(driver.AnyFailure());
  EXPECT_EQ(board.Status(), QString());
  EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(RunDriverTest, ASingleRunOpensItsLogOnErrors) {
  server.Route(QStringLiteral("/a"), Answer::Text("1"));
  server.Route(QStringLiteral("/cut"), Answer::Text("333").Ends(Answer::Ending::CutOff, 1));
  options.autoClose = true;
  Add(QStringLiteral("http://site.test/a"));
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(board.Status(), QStringLiteral("処理終了"));
  EXPECT_EQ(board.FileCount(), QStringLiteral("1"));
  EXPECT_TRUE(opener.opened.isEmpty());
  EXPECT_EQ(closeRequests, 1);
  Add(QStringLiteral("http://site.test/cut"));
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(opener.opened, QStringList(QStringLiteral("default:") + log.Path()));
  EXPECT_TRUE(messages.boxes.empty()) << "no confirmation";
}

TEST_F(RunDriverTest, TheBatchAsksFirstAndKeepsTheWindowOnANo) {
  options.autoClose = true;
  messages.answers = {MessageBox::Answer::Cancel};
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(messages.Texts(),
            QStringList(QStringLiteral("一括ダウンロード|全てのＵＲＬリストから一括ダウンロード"
                                       "します。よろしいですか？")));
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(closeRequests, 0);
}

TEST_F(RunDriverTest, ThePresetActionIsPerformedAfterTheCountdown) {
  job.EditFlag(TargetUrlItem::Skip, true);
  driver.SetAfterBatchAction(QStringLiteral("シャットダウン"));
  QStringList captions;
  QObject::connect(&board, &StatusBoard::Changed, [&] {
    if (board.GetStandby().checked) captions.append(board.GetStandby().toolTip);
  });
  QTimer watch;
  QStringList shown;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!board.File().isEmpty() && (shown.isEmpty() || shown.last() != board.File())) {
      shown.append(board.File());
    }
  });
  watch.start(0);
  power.refusal = QStringLiteral("できません。");
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(power.performed, QStringList(QStringLiteral("シャットダウン")));
  EXPECT_EQ(captions.value(0),
            QStringLiteral("一括ダウンロード終了後にＰＣを「シャットダウン」状態にします。"));
  EXPECT_EQ(shown.size(), 50);
  EXPECT_EQ(shown.value(0) + shown.value(49), QStringLiteral("4.90.0"));
  EXPECT_EQ(board.Status(), QStringLiteral("できません。"));
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
  driver.SetAfterBatchAction(QStringLiteral("閉じる"));
  QCoro::waitFor(driver.PowerActionCountdown());
  EXPECT_EQ(closeRequests, 1) << "a preset action ends the program without the box, too";
}

TEST_F(RunDriverTest, GeneratingClearsAStaleCancelAndHidesTheButton) {
  server.Route(QStringLiteral("/dir/index.html"), Answer::Text("<a href=\"one.mp3\">1</a>"));
  state.RequestCancel();
  bool shown = false;
  QObject::connect(&board, &StatusBoard::Changed,
                   [&] { shown = shown || (board.CancelShown() && board.CancelEnabled()); });
  QCoro::Task<void> first = driver.GenerateCommand(false);
  QCoro::waitFor(driver.GenerateCommand(false));
  EXPECT_TRUE(driver.IsRunning()) << "a second command is refused";
  QCoro::waitFor(first);
  EXPECT_EQ(files.Count(), 1);
  EXPECT_EQ(board.FileCount(), QStringLiteral("1"));
  EXPECT_TRUE(shown);
  EXPECT_FALSE(board.CancelShown());
}

}  // namespace
}  // namespace zentorin
