// SPDX-License-Identifier: MIT
#include "download/run_driver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    server.Route("/dir/index.html", Answer::Text("<a href=\"one.mp3\">1</a>"));
    server.Route("/dir/one.mp3", Answer::Text("1"));
    server.Route("/cut.mp3", Answer::Text("333").Ends(Answer::Ending::CutOff, 1));
  }

  RunOutcome Batch() { return QCoro::waitFor(driver.BatchCommand()); }

  int closeRequests = 0;
};

TEST_F(RunDriverTest, TheBatchRunsEveryJobThatIsNotSkippedAndLogsThem) {
  server.Route("/three.html", Answer::Text("<a href=\"/cut.mp3\">3</a>"));
  AddJob("skipped", "http://site.test/two.html");
  job.EditFlag(TargetUrlItem::Skip, true);
  AddJob("failing", "http://site.test/three.html");
  home.Write("log.txt", "an old log");
  QList<int> selected;
  QObject::connect(&urlList, &UrlList::Selected, [&](int row) { selected.append(row); });
  QStringList turns;
  QObject::connect(&activity, &Activity::Changed, [&] {
    const ActivityState& now = activity.Now();
    EXPECT_TRUE(now.Works() || now.job.count == 0);
    if (now.job.count == 0) return;
    EXPECT_EQ(power.holds, 1);
    const QString turn = QString("%1/%2").arg(now.job.number).arg(now.job.count);
    if (!turns.contains(turn)) turns.append(turn);
  });
  outcome = Batch();

  EXPECT_EQ(selected, QList<int>({0, 1, 2}));
  EXPECT_EQ(server.Hits("/two.html"), 0);
  EXPECT_TRUE(home.Read("log.txt").startsWith("-- 2024/05/01 23:30:05 ----\r\nStart"));
  EXPECT_EQ(LogText(), "< failing >\r\n\r\n  x Error 57\r\n    http://site.test/cut.mp3\r\n\r\n");
  EXPECT_EQ(home.Read("save/one.mp3"), "1");
  EXPECT_EQ(turns, QStringList({"1/3", "2/3", "3/3"}));
  EXPECT_EQ(Status(), "異常終了");
  EXPECT_EQ(power.holds, 0);
  EXPECT_EQ(capture.lookUps, 1);
  EXPECT_EQ(ExitStatusOf(outcome), kExitFailures);
  EXPECT_EQ(outcome.jobs, 2);
  EXPECT_EQ(outcome.completed, 1);
  EXPECT_EQ(outcome.failed, 1);
  EXPECT_EQ(outcome.bytes, 1);
}

TEST_F(RunDriverTest, ACancelAtAnyMomentEndsTheBatch) {
  server.Route("/dir/index.html", Answer::Text("<a href=\"one.mp3\"><a href=\"sub.html\">"));
  job.Edit(TargetUrlItem::SubPattern, "href=\"(.+?\\.html)\"");
  job.Edit(TargetUrlItem::Depth, "1");
  AddJob("next", "http://site.test/next.html");
  QString moment;
  QObject::connect(&server, &test::LoopbackServer::RequestReceived, [&](const QString& target) {
    if (target == moment) driver.CancelCommand();
  });
  for (const QString target : {"/dir/index.html", "/dir/sub.html", "/dir/one.mp3"}) {
    moment = target;
    SCOPED_TRACE(target.toStdString());
    EXPECT_EQ(ExitStatusOf(Batch()), kExitCancelled);
    EXPECT_EQ(urlList.SelectedRow(), 0);
    EXPECT_EQ(server.Hits("/next.html"), 0);
    EXPECT_FALSE(QFileInfo::exists(home.Path("save/one.mp3")));
    EXPECT_FALSE(activity.Now().cancelling);
    EXPECT_EQ(home.Read("log.txt").contains("< daily >"), target == "/dir/one.mp3")
        << "a cancelled crawl is not followed by a download";
  }
}

TEST_F(RunDriverTest, WhatWasAskedAheadEndsWithItsCommand) {
  server.Route("/1/a.mp3", Answer::Text("1"));
  server.Route("/2/a.mp3", Answer().Ends(Answer::Ending::Silent));
  Add("http://site.test/1/a.mp3");
  Add("http://site.test/2/a.mp3");
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(Marks(), "o|-") << "and the engine ends without a transfer that is left";
}

TEST_F(RunDriverTest, AFatalErrorEndsTheBatchAndAJobWithoutARootTakesNoRowsOfAnother) {
  AddJob("next", "http://site.test/next.html");
  home.Write("save", "in the way");
  EXPECT_EQ(ExitStatusOf(Batch()), kExitFailures);
  EXPECT_EQ(server.Hits("/next.html"), 0);
  urlList.Remove(1);
  job.Edit(TargetUrlItem::Root, {});
  QFile::remove(home.Path("save"));
  Add("http://site.test/stale");
  EXPECT_TRUE(Batch().anyFailure);
  EXPECT_EQ(server.Hits("/stale"), 0);
}

TEST_F(RunDriverTest, ALogThatCannotBeWrittenEndsTheRunBeforeAnyDownload) {
  QDir(home.Path()).mkdir("log.txt");
  Add("http://site.test/a");
  EXPECT_TRUE(QCoro::waitFor(driver.DownloadCommand(false)).anyFailure);
  EXPECT_TRUE(server.Requests().isEmpty());
  EXPECT_EQ(Status(), QString());
  EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(RunDriverTest, ASingleRunOpensItsLogOnErrors) {
  options.autoClose = true;
  Add("http://site.test/dir/one.mp3");
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(Status(), "処理終了");
  EXPECT_TRUE(opener.opened.isEmpty());
  EXPECT_EQ(closeRequests, 1);
  Add("http://site.test/cut.mp3");
  QCoro::waitFor(driver.DownloadCommand(false));
  EXPECT_EQ(opener.opened, QStringList("default:" + log.Path()));
  EXPECT_TRUE(messages.boxes.empty()) << "no confirmation";
}

TEST_F(RunDriverTest, TheBatchAsksFirstAndPerformsThePresetActionAfterTheCountdown) {
  options.autoClose = true;
  messages.answers = {MessageBox::Answer::Cancel};
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(messages.boxes.size(), 1U);
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(closeRequests, 0);
  options.autoClose = false;
  job.EditFlag(TargetUrlItem::Skip, true);
  driver.SetAfterBatchAction("シャットダウン");
  QSet<qint64> shown;
  QObject::connect(&activity, &Activity::Changed, [&] {
    if (activity.Now().phase == Phase::CountingDown) shown.insert(activity.Now().left.count());
  });
  power.refusal = "できません。";
  QCoro::waitFor(driver.DownloadCommand(true));
  EXPECT_EQ(power.performed, QStringList("シャットダウン"));
  EXPECT_EQ(shown.size(), 50) << "every tenth from 4.9 s down";
  EXPECT_TRUE(shown.contains(4900));
  EXPECT_EQ(Status(), "できません。");
  EXPECT_EQ(closeRequests, 1);
  EXPECT_EQ(driver.AfterBatchAction(), QString());
  EXPECT_EQ(activity.Now().afterBatch, AfterBatch());
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
}

TEST_F(RunDriverTest, TheCountdownStopsForACancelAndForAnUncheckedBox) {
  driver.SetCountdownStep(std::chrono::hours(1));
  bool unchecks = false;
  QObject::connect(&activity, &Activity::Changed, [&] {
    if (activity.Now().phase != Phase::CountingDown || activity.Now().left.count() == 0) return;
    if (!unchecks) return driver.CancelCommand();
    driver.SetCountdownStep(std::chrono::milliseconds(1));
    if (activity.Now().afterBatch.chosen) activity.SetAfterBatch({});
  });
  driver.SetAfterBatchAction("休止");
  EXPECT_TRUE(Batch().cancelled);
  EXPECT_EQ(Status(), QString());
  unchecks = true;
  driver.SetCountdownStep(std::chrono::milliseconds(1));
  EXPECT_FALSE(Batch().cancelled);
  EXPECT_EQ(power.performed, QStringList());
  EXPECT_EQ(closeRequests, 0);
  driver.SetAfterBatchAction("閉じる");
  EXPECT_FALSE(Batch().cancelled);
  EXPECT_EQ(closeRequests, 1) << "a preset action ends the program without the box, too";
}

TEST_F(RunDriverTest, OneCommandRunsAtATime) {
  QCoro::Task<ListOutcome> first = driver.GenerateCommand(false);
  EXPECT_EQ(activity.Now().phase, Phase::Listing);
  QCoro::waitFor(driver.GenerateCommand(false));
  EXPECT_TRUE(driver.IsRunning()) << "a second command is refused";
  EXPECT_EQ(Status(), "処理中です。終了を待つか、キャンセルしてください。");
  QCoro::waitFor(first);
  EXPECT_EQ(files.Count(), 1);
  EXPECT_EQ(activity.Now().phase, Phase::Resting);
  driver.CancelCommand();
  QCoro::waitFor(driver.GenerateCommand(false));
  EXPECT_EQ(files.Count(), 1) << "a press at rest stops nothing";
}

}  // namespace
}  // namespace zentorin
