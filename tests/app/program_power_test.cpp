// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "tests/app/program_run.h"
#include "tests/support/loopback_server.h"
#include "tests/support/private_bus.h"

namespace zentorin::test {
namespace {

// The program with a power action for the end of its batch, on a bus where the test plays the
// services. The batch saves one song and misses another.
class ProgramPowerTest : public testing::Test {
 protected:
  ProgramPowerTest() {
    const JobFields songs = {{"description", "songs"},
                             {"root", "http://site.test/index.html"},
                             {"file_pattern", "href=\"(.+?\\.mp3)\""},
                             {"save_path", "save"},
                             {"depth", "0"}};
    const JobFields skipped = {{"description", "skipped"}, {"skip", "1"}};
    home.Write("list.dat", ListFile({songs, skipped}));
    server.Route("/index.html", Answer::Text("<a href=\"a.mp3\">a</a> <a href=\"gone.mp3\">b</a>"));
    server.Route("/a.mp3", Answer::Text("a song", "audio/mpeg"));
    program.SetVariable("DBUS_SYSTEM_BUS_ADDRESS", services.Address());
    program.SetVariable("DBUS_SESSION_BUS_ADDRESS", services.Address());
  }

  int Run(const char* action) {
    return program.Run({"-a", "-q", QString::fromLatin1(action), "-f", "list.dat"});
  }
  // Standard error has that line once.
  bool Says(const QString& line) { return program.Errors().count(line + u'\n') == 1; }

  LoopbackServer server;
  PrivateBus services;
  TempDir home;
  ProgramRun program{home, server.ConnectTo()};
};

TEST_F(ProgramPowerTest, ABatchWithoutADisplayEndsWithItsPowerActionAndItsExitStatus) {
  const QString hold = "Inhibit(sleep:idle,Zentorin,一括ダウンロードの実行中,block)";
  server.RouteTo("/a.mp3", [&](const ReceivedRequest&) {
    services.WaitForCall(hold);
    return Answer::Text("a song", "audio/mpeg");
  });
  EXPECT_EQ(Run("shutdown"), 0) << program.Errors().toStdString();
  const QStringList& calls = services.calls;
  EXPECT_EQ(calls.value(0), hold);
  // These two travel by different ways.
  const QStringList ended = calls.mid(1, 2);
  EXPECT_TRUE(ended.contains("released"));
  EXPECT_TRUE(
      ended.contains("Notify(Zentorin,0,zentorin,一括ダウンロード,処理終了: ジョブ 1、"
                     "ファイル 完了 1・失敗 0・スキップ 1、6 バイト,,,-1)"))
      << calls.join(u' ').toStdString();
  EXPECT_EQ(calls.mid(3), QStringList({"CanPowerOff()", "PowerOffWithFlags(16)"}));
  EXPECT_TRUE(Says("「シャットダウン」を要求し、受け付けられました。"))
      << program.Errors().toStdString();
  EXPECT_EQ(home.Read("save/a.mp3"), "a song");
}

TEST_F(ProgramPowerTest, ARefusalIsToldOnceAndChangesNoExitStatus) {
  services.answers["CanHibernate"] = "na";
  EXPECT_EQ(Run("h"), 0);
  EXPECT_FALSE(services.calls.join(u' ').contains("HibernateWithFlags"));
  EXPECT_TRUE(Says("「休止」を実行できません。このコンピュータは対応していません。"))
      << program.Errors().toStdString();
}

TEST_F(ProgramPowerTest, ARunInAWindowTellsItsPowerActionOnStandardErrorToo) {
  program.SetVariable("QT_QPA_PLATFORM", QStringLiteral("offscreen"));
  services.answers[QStringLiteral("CanReboot")] = QStringLiteral("challenge");
  EXPECT_EQ(Run("r"), 0);
  EXPECT_TRUE(Says(QStringLiteral("「再起動」を実行できません。管理者の認証が必要です。")))
      << program.Errors().toStdString();
  EXPECT_EQ(services.calls.last(), QStringLiteral("CanReboot()"));
}

TEST_F(ProgramPowerTest, ADryRunTouchesNoService) {
  program.SetVariable("ZENTORIN_POWER", "dry-run");
  EXPECT_EQ(Run("l"), 0);
  EXPECT_EQ(services.calls, QStringList());
  EXPECT_TRUE(
      Says("「ログオフ」は試行のため実行しません（呼び出し: "
           "TerminateSession(自分のセッション)）。"))
      << program.Errors().toStdString();
}

TEST_F(ProgramPowerTest, TheNoticeArrivesThoughTheProgramEndsAtOnce) {
  EXPECT_EQ(Run("close"), 0);
  EXPECT_TRUE(services.calls.join(u' ').contains("Notify("));
}

}  // namespace
}  // namespace zentorin::test
