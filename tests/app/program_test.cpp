// SPDX-License-Identifier: MIT
#include <QDir>
#include <QLocalServer>
#include <csignal>
#include <utility>
#include <vector>

#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "app/list_lock.h"
#include "base/ansi_text.h"
#include "tests/app/program_run.h"
#include "tests/support/loopback_server.h"
#include "tests/support/private_bus.h"

namespace zentorin::test {
namespace {

const QString kList = "night list -1.dat";

JobFields Mp3Job(const QByteArray& description, const QByteArray& folder) {
  return {{"description", EncodeAnsi(QString::fromUtf8(description)).bytes},
          {"root", "http://site.test/" + folder + "/index.html"},
          {"file_pattern", R"x(href="(.+?\.mp3)")x"},
          {"save_path", folder},
          {"depth", "0"}};
}

// The program on a small site: one/ has two songs, two/ a song and a dead link, three/ a song whose
// transfer breaks off, four/ one that never ends.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    server.Route("/one/index.html", Answer::Text(R"(<a href="a.mp3"> <a href="sub/b.mp3">)"));
    server.Route("/one/a.mp3", Answer::Text("first song", "audio/mpeg"));
    server.Route("/one/sub/b.mp3", Answer::Text("second song", "audio/mpeg"));
    server.Route("/two/index.html", Answer::Text(R"(<a href="c.mp3"> <a href="gone.mp3">)"));
    server.Route("/two/c.mp3", Answer::Text("third song", "audio/mpeg"));
    server.Route("/three/index.html", Answer::Text(R"(<a href="cut.mp3">)"));
    server.Route("/three/cut.mp3",
                 Answer::Generated(200'000).Ends(Answer::Ending::CutOff, 150'000));
    server.Route("/four/index.html", Answer::Text(R"(<a href="long.mp3">)"));
    server.Route("/four/long.mp3",
                 Answer::Generated(1'000'000).Ends(Answer::Ending::Stall, 500'000));
  }

  QStringList FilesBelow(const QString& folder) const {
    return QDir(home.Path(folder)).entryList(QDir::Files);
  }

  LoopbackServer server;
  TempDir home;
  ProgramRun program{home, server.ConnectTo()};
};

TEST_F(ProgramTest, DoesTheJobsOfAListAndWritesThemDown) {
  home.Write(kList, ListFile({Mp3Job("一番", "one"), Mp3Job("two", "two")}));
  EXPECT_EQ(program.Run({"-auto", "-f", kList}), 0) << program.Errors().toStdString();
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(home.Read("one/b.mp3"), "second song");
  EXPECT_EQ(home.Read("two/c.mp3"), "third song");
  EXPECT_EQ(FilesBelow("two"), QStringList({"c.mp3"}));
  EXPECT_EQ(LogWithoutDates(home),
            "DATE\r\nStart - 一括\r\n\r\n\r\n"
            "DATE\r\n< 一番 >\r\n\r\n"
            "  o Complete\r\n    http://site.test/one/a.mp3\r\n\r\n"
            "  o Complete\r\n    http://site.test/one/sub/b.mp3\r\n\r\n\r\n\r\n\r\n"
            "DATE\r\n< two >\r\n\r\n"
            "  o Complete\r\n    http://site.test/two/c.mp3\r\n\r\n"
            "  ? Skip - None\r\n    http://site.test/two/gone.mp3\r\n\r\n"
            "\r\n\r\n\r\n");
  EXPECT_TRUE(home.Read("Conf.txt").startsWith("form left = 130\r\n"));
  EXPECT_TRUE(home.Read("reglist.txt").startsWith("[sub url]\r\n"));
  const QString errors = program.Errors();
  EXPECT_TRUE(errors.contains("[1/2] 一番\n")) << errors.toStdString();
  EXPECT_TRUE(errors.contains("ジョブ 2、ファイル 完了 3・失敗 0・スキップ 1、31 バイト\n保存先: " +
                              home.Path("one") + "\n"))
      << errors.toStdString();
  EXPECT_EQ(program.Output(), QString());
}

TEST_F(ProgramTest, EndsWithTwoWhenARowOrAJobFails) {
  home.Write(kList, ListFile({Mp3Job("cut", "three"), Mp3Job("one", "one")}));
  EXPECT_EQ(program.Run({"-a", "-f", kList}), 2);
  EXPECT_TRUE(
      LogWithoutDates(home).contains("  x Error 57\r\n    http://site.test/three/cut.mp3\r\n"));
  EXPECT_EQ(FilesBelow("three"), QStringList());
  EXPECT_EQ(home.Read("one/a.mp3"), "first song") << "the jobs after it are done";

  ProgramRun unreachable(home, server.ConnectTo());
  home.Write("none.dat", ListFile({Mp3Job("none", "none")}));
  EXPECT_EQ(unreachable.Run({"-a", "-f", "none.dat"}), 2);
  EXPECT_TRUE(unreachable.Errors().contains("URL が見つかりません！"));
}

TEST_F(ProgramTest, RefusesToStartWithAClearMessage) {
  const QString list = home.Write("list.dat", ListFile({Mp3Job("one", "one")}));
  const QString taken = home.Write("taken.dat", ListFile({Mp3Job("one", "one")}));
  ListLock otherRun;
  ASSERT_TRUE(otherRun.Acquire(taken, home.Path()));
  const QString binary = home.Write("binary.dat", "x root = y\r\n");
  const std::vector<std::pair<QStringList, QString>> cases = {
      {{"-a", "25:00", "-f", list},
       "エラー発生: time の指定が不正です。 / 25:00 → 11:34 の形式（時：分）\n"},
      {{"-a", "-f", "none.dat"}, "エラー発生: ＵＲＬリスト読み込みエラー / none.dat\n"},
      {{"-a"}, "エラー発生: 実行するファイルが指定されていない、もしくは不正です！\n"},
      {{"-a", "-f", binary}, "エラー発生: ＵＲＬリスト読み込みエラー / " + binary},
      {{"-a", "-f", taken}, "他の自動実行で使用中です。 / " + taken},
      {{"-f", list}, "zentorin -auto -file"},
  };
  for (const auto& [arguments, error] : cases) {
    ProgramRun run(home, server.ConnectTo());
    EXPECT_EQ(run.Run(arguments), 1);
    EXPECT_TRUE(run.Errors().contains(error)) << run.Errors().toStdString();
  }
  EXPECT_TRUE(server.Requests().isEmpty());
}

TEST_F(ProgramTest, AnswersHelpAndVersionBeforeAnythingElse) {
  EXPECT_EQ(program.Run({"-a", "--help"}), 0);
  EXPECT_TRUE(program.Output().contains("-quit"));
  ProgramRun version(home, QString());
  EXPECT_EQ(version.Run({"--version"}), 0);
  EXPECT_EQ(version.Output(), "Zentorin 0.1.0\n");
  EXPECT_TRUE(QDir(home.Path()).isEmpty());
}

TEST_F(ProgramTest, SilentBusesAndADeadDisplayHoldNothingUp) {
  QLocalServer silent;
  ASSERT_TRUE(silent.listen(home.Path("silent")));
  const QString bus = "unix:path=" + silent.fullServerName();
  const QString unreachable = "ディスプレイ「:54321」に接続できません。\n";
  home.Write(kList, ListFile({Mp3Job("one", "one")}));
  ProgramRun windowed(home, server.ConnectTo());
  for (ProgramRun* const each : {&program, &windowed}) {
    each->SetVariable("DBUS_SYSTEM_BUS_ADDRESS", bus);
    each->SetVariable("DBUS_SESSION_BUS_ADDRESS", bus);
    each->SetVariable("DISPLAY", ":54321");
  }
  EXPECT_EQ(program.Run({"-a", "-q", "-f", kList}), 0);
  EXPECT_TRUE(program.Errors().startsWith(unreachable)) << program.Errors().toStdString();
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(windowed.Run({}), 1) << "a window was asked for";
  EXPECT_TRUE(windowed.Errors().startsWith(unreachable + "ウィンドウを表示できません。"))
      << windowed.Errors().toStdString();
}

// A run on the song that never ends, stopped by signals.
class ProgramCancelTest : public ProgramTest {
 protected:
  ProgramCancelTest() { home.Write("list.dat", ListFile({Mp3Job("endless", "four")})); }

  void WaitForRequest(const QString& target, int hits) {
    while (server.Hits(target) < hits) {
      ASSERT_TRUE(QCoro::waitFor(
          qCoro(&server, &LoopbackServer::RequestReceived, std::chrono::seconds(30))));
    }
  }

  QStringList arguments = {"-a", "-f", "list.dat"};
};

TEST_F(ProgramCancelTest, ASignalInATransferLeavesNoPartialFileButLogAndSettings) {
  program.Start(arguments);
  // One request asks for the header, the second one for the body.
  WaitForRequest("/four/long.mp3", 2);
  program.Send(SIGINT);
  EXPECT_EQ(program.WaitForEnd(), 130) << program.Errors().toStdString();
  EXPECT_TRUE(QDir(home.Path("four")).isEmpty());
  EXPECT_TRUE(LogWithoutDates(home).contains("  - Cancel    http://site.test/four/long.mp3"));
  EXPECT_FALSE(home.Read("Conf.txt").isNull());
  EXPECT_TRUE(program.Errors().contains("中止: ジョブ 1"));
}

TEST_F(ProgramCancelTest, ASignalWhileAPageIsFetchedEndsTheBatch) {
  server.Route("/four/index.html", Answer().Ends(Answer::Ending::Silent));
  program.Start(arguments);
  WaitForRequest("/four/index.html", 1);
  program.Send(SIGTERM);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_FALSE(home.Read("Conf.txt").isNull());
  EXPECT_EQ(server.Hits("/four/long.mp3"), 0);
}

TEST_F(ProgramCancelTest, ASignalEndsTheCountdown) {
  if (QTime::currentTime() >= QTime(23, 57)) GTEST_SKIP() << "no later start time is left today";
  arguments.insert(1, "23:59");
  program.Start(arguments);
  ASSERT_TRUE(program.WaitForError("開始までの時間"));
  ProgramRun second(home, server.ConnectTo());
  EXPECT_EQ(second.Run(arguments), 1) << "the list is taken by the first run";
  program.Send(SIGTERM);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_TRUE(server.Requests().isEmpty());
}

// A power action at the end of a batch, on a bus where the test plays the services.
class ProgramPowerTest : public ProgramTest {
 protected:
  ProgramPowerTest() {
    home.Write("list.dat", ListFile({Mp3Job("songs", "two"), {{"skip", "1"}}}));
    program.SetVariable("DBUS_SYSTEM_BUS_ADDRESS", services.Address());
    program.SetVariable("DBUS_SESSION_BUS_ADDRESS", services.Address());
  }

  int RunAndThen(const QString& action) {
    return program.Run({"-a", "-q", action, "-f", "list.dat"});
  }
  // Standard error has that line once.
  bool Says(const QString& line) { return program.Errors().count(line + u'\n') == 1; }

  PrivateBus services;
};

TEST_F(ProgramPowerTest, ABatchWithoutADisplayEndsWithItsPowerActionAndItsExitStatus) {
  const QString hold = "Inhibit(sleep:idle,Zentorin,一括ダウンロードの実行中,block)";
  server.RouteTo("/two/c.mp3", [&](const ReceivedRequest&) {
    services.WaitForCall(hold);
    return Answer::Text("third song", "audio/mpeg");
  });
  EXPECT_EQ(RunAndThen("shutdown"), 0) << program.Errors().toStdString();
  const QStringList& calls = services.calls;
  EXPECT_EQ(calls.value(0), hold);
  // These two travel by different ways.
  const QStringList ended = calls.mid(1, 2);
  EXPECT_TRUE(ended.contains("released"));
  EXPECT_TRUE(
      ended.contains("Notify(Zentorin,0,zentorin,一括ダウンロード,処理終了: ジョブ 1、"
                     "ファイル 完了 1・失敗 0・スキップ 1、10 バイト,,,-1)"))
      << calls.join(u' ').toStdString();
  EXPECT_EQ(calls.mid(3), QStringList({"CanPowerOff()", "PowerOffWithFlags(16)"}));
  EXPECT_TRUE(Says("「シャットダウン」を要求し、受け付けられました。"))
      << program.Errors().toStdString();
}

TEST_F(ProgramPowerTest, ARefusalIsToldOnceAndChangesNoExitStatus) {
  services.answers["CanHibernate"] = "na";
  EXPECT_EQ(RunAndThen("h"), 0);
  EXPECT_FALSE(services.calls.join(u' ').contains("HibernateWithFlags"));
  EXPECT_TRUE(Says("「休止」を実行できません。このコンピュータは対応していません。"))
      << program.Errors().toStdString();
}

TEST_F(ProgramPowerTest, ARunInAWindowTellsItsPowerActionOnStandardErrorToo) {
  program.SetVariable("QT_QPA_PLATFORM", "offscreen");
  services.answers["CanReboot"] = "challenge";
  EXPECT_EQ(RunAndThen("r"), 0);
  EXPECT_TRUE(Says("「再起動」を実行できません。管理者の認証が必要です。"))
      << program.Errors().toStdString();
  EXPECT_EQ(services.calls.last(), "CanReboot()");
}

TEST_F(ProgramPowerTest, ADryRunTouchesNoService) {
  program.SetVariable("ZENTORIN_POWER", "dry-run");
  EXPECT_EQ(RunAndThen("l"), 0);
  EXPECT_EQ(services.calls, QStringList());
  EXPECT_TRUE(
      Says("「ログオフ」は試行のため実行しません（呼び出し: "
           "TerminateSession(自分のセッション)）。"))
      << program.Errors().toStdString();
}

TEST_F(ProgramPowerTest, TheNoticeArrivesThoughTheProgramEndsAtOnce) {
  EXPECT_EQ(RunAndThen("close"), 0);
  EXPECT_TRUE(services.calls.join(u' ').contains("Notify("));
}

}  // namespace
}  // namespace zentorin::test
