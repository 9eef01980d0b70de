// SPDX-License-Identifier: MIT
#include <QDir>
#include <QLocalServer>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "app/list_lock.h"
#include "base/ansi_text.h"
#include "tests/app/program_run.h"
#include "tests/support/loopback_server.h"

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
// transfer breaks off.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    server.Route("/one/index.html",
                 Answer::Text(R"(<a href="a.mp3">a</a> <a href="sub/b.mp3">b</a>)"));
    server.Route("/one/a.mp3", Answer::Text("first song", "audio/mpeg"));
    server.Route("/one/sub/b.mp3", Answer::Text("second song", "audio/mpeg"));
    server.Route("/two/index.html",
                 Answer::Text(R"(<a href="c.mp3">c</a> <a href="gone.mp3">d</a>)"));
    server.Route("/two/c.mp3", Answer::Text("third song", "audio/mpeg"));
    server.Route("/three/index.html", Answer::Text(R"(<a href="cut.mp3">e</a>)"));
    server.Route("/three/cut.mp3",
                 Answer::Generated(200'000).Ends(Answer::Ending::CutOff, 150'000));
  }

  int Run(const QStringList& arguments) { return program.Run(arguments); }
  QStringList FilesBelow(const QString& folder) const {
    return QDir(home.Path(folder)).entryList(QDir::Files);
  }

  LoopbackServer server;
  TempDir home;
  ProgramRun program{home, server.ConnectTo()};
};

TEST_F(ProgramTest, DoesTheJobsOfAListAndWritesThemDown) {
  home.Write(kList, ListFile({Mp3Job("一番", "one"), Mp3Job("two", "two")}));
  EXPECT_EQ(Run({"-auto", "-f", kList}), 0) << program.Errors().toStdString();
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
  EXPECT_EQ(Run({"-a", "-f", kList}), 2);
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
  const QString binary = home.Write("binary.dat", "x root = y\r\n");
  const std::vector<std::pair<QStringList, QString>> cases = {
      {{"-a", "25:00", "-f", list},
       "エラー発生: time の指定が不正です。 / 25:00 → 11:34 の形式（時：分）\n"},
      {{"-a", "-f", "none.dat"}, "エラー発生: ＵＲＬリスト読み込みエラー / none.dat\n"},
      {{"-a"}, "エラー発生: 実行するファイルが指定されていない、もしくは不正です！\n"},
      {{"-a", "-f", binary}, "エラー発生: ＵＲＬリスト読み込みエラー / " + binary},
      {{"-f", list}, "zentorin -auto -file"},
  };
  for (const auto& [arguments, error] : cases) {
    ProgramRun run(home, server.ConnectTo());
    EXPECT_EQ(run.Run(arguments), 1);
    EXPECT_TRUE(run.Errors().contains(error)) << run.Errors().toStdString();
  }
  EXPECT_TRUE(server.Requests().isEmpty());
}

TEST_F(ProgramTest, RefusesAListThatAnotherRunWorksOn) {
  const QString list = home.Write("list.dat", ListFile({Mp3Job("one", "one")}));
  ListLock lock;
  ASSERT_TRUE(lock.Acquire(list, home.Path()));
  EXPECT_EQ(Run({"-a", "-f", list}), 1);
  EXPECT_TRUE(program.Errors().contains("他の自動実行で使用中です。 / " + list))
      << program.Errors().toStdString();
  EXPECT_TRUE(server.Requests().isEmpty());
}

TEST_F(ProgramTest, AnswersHelpAndVersionBeforeAnythingElse) {
  EXPECT_EQ(Run({"-a", "--help"}), 0);
  EXPECT_TRUE(program.Output().contains("-quit"));
  ProgramRun version(home, QString());
  EXPECT_EQ(version.Run({"--version"}), 0);
  EXPECT_EQ(version.Output(), "Zentorin 0.1.0\n");
  EXPECT_TRUE(QDir(home.Path()).isEmpty());
}

TEST_F(ProgramTest, SilentBusesAndADeadDisplayHoldNothingUp) {
  QLocalServer silent;
  ASSERT_TRUE(silent.listen(home.Path("silent")));
  const QString bus = QStringLiteral("unix:path=") + silent.fullServerName();
  const QString unreachable = QStringLiteral("ディスプレイ「:54321」に接続できません。\n");
  home.Write(kList, ListFile({Mp3Job("one", "one")}));
  ProgramRun windowed(home, server.ConnectTo());
  for (ProgramRun* const each : {&program, &windowed}) {
    each->SetVariable("DBUS_SYSTEM_BUS_ADDRESS", bus);
    each->SetVariable("DBUS_SESSION_BUS_ADDRESS", bus);
    each->SetVariable("DISPLAY", QStringLiteral(":54321"));
  }
  EXPECT_EQ(Run({QStringLiteral("-a"), QStringLiteral("-q"), QStringLiteral("-f"), kList}), 0);
  EXPECT_TRUE(program.Errors().startsWith(unreachable)) << program.Errors().toStdString();
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(windowed.Run({}), 1) << "a window was asked for";
  EXPECT_TRUE(
      windowed.Errors().startsWith(unreachable + QStringLiteral("ウィンドウを表示できません。")))
      << windowed.Errors().toStdString();
}

}  // namespace
}  // namespace zentorin::test
