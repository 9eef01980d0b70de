// SPDX-License-Identifier: MIT
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QRegularExpression>
#include <csignal>
#include <iostream>
#include <utility>
#include <vector>

#include <QCoro/QCoroProcess>
#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "app/list_lock.h"
#include "base/ansi_text.h"
#include "tests/support/loopback_server.h"
#include "tests/support/private_bus.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

const QString kList = "night list -1.dat";

// The bytes of a list file whose jobs fetch the songs of these folders of the site, one each.
QByteArray ListOf(const QStringList& folders) {
  QString text;
  for (const QString& folder : folders) {
    text += QString(
                "%1 description = 曲 %2\r\n%1 root = http://site.test/%2/index.html\r\n"
                "%1 file_pattern = href=\"(.+?\\.mp3)\"\r\n%1 save_path = %2\r\n"
                "%1 depth = 0\r\n")
                .arg(folders.indexOf(folder) + 1)
                .arg(folder);
  }
  return EncodeAnsi(text).bytes;
}

// The program's log as text, each entry's date and time replaced by "DATE".
QString LogWithoutDates(const TempDir& home) {
  static const QRegularExpression kDates("^-- \\d{4}/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d ----\r$",
                                         QRegularExpression::MultilineOption);
  return DecodeAnsi(home.Read("log.txt")).replace(kDates, "DATE\r");
}

// The real program in a process of its own, with no display, no bus and the program's folder
// `home`, while the test's event loop goes on serving.
class ProgramRun {
 public:
  ProgramRun(const TempDir& home, const LoopbackServer& server) {
    for (const char* const name :
         {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "ZENTORIN_POWER"}) {
      environment.remove(name);
    }
    SetBuses("unix:path=" + home.Path("no-bus"));
    environment.insert("ZENTORIN_HOME", home.Path());
    environment.insert("ZENTORIN_CONNECT_TO", server.ConnectTo());
    process_.setReadChannel(QProcess::StandardError);
  }

  void SetBuses(const QString& address) {
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", address);
    environment.insert("DBUS_SESSION_BUS_ADDRESS", address);
  }
  void Start(const QStringList& arguments) {
    process_.setProcessEnvironment(environment);
    process_.start(ZENTORIN_PROGRAM, arguments);
  }
  // Starts, waits for the end and answers the exit status; -1 after a crash.
  int Run(const QStringList& arguments) {
    Start(arguments);
    return WaitForEnd();
  }
  int WaitForEnd() {
    if (process_.state() != QProcess::NotRunning) {
      QCoro::waitFor(qCoro(&process_, &QProcess::finished, std::chrono::seconds(30)));
    }
    const bool ended = process_.state() == QProcess::NotRunning;
    EXPECT_TRUE(ended) << "still running: " << Errors().toStdString();
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }
  // Waits, serving nobody, until standard error holds that text.
  bool WaitForError(const QString& text) {
    while (!Errors().contains(text)) {
      if (!process_.waitForReadyRead()) return false;
    }
    return true;
  }
  void Send(int signal) const { ::kill(static_cast<pid_t>(process_.processId()), signal); }

  QString Errors() {
    errors_ += process_.readAllStandardError();
    return QString::fromUtf8(errors_);
  }
  QString Output() { return QString::fromUtf8(process_.readAllStandardOutput()); }

  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

 private:
  QProcess process_;
  QByteArray errors_;
};

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

  void TearDown() override {
    if (HasFailure()) std::cerr << program.Errors().toStdString();
  }

  LoopbackServer server;
  TempDir home;
  ProgramRun program{home, server};
};

TEST_F(ProgramTest, DoesTheJobsOfAListAndWritesThemDown) {
  home.Write(kList, ListOf({"one", "two"}));
  EXPECT_EQ(program.Run({"-auto", "-f", kList}), 0);
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(home.Read("one/b.mp3"), "second song");
  EXPECT_EQ(home.Read("two/c.mp3"), "third song");
  EXPECT_EQ(QDir(home.Path("two")).entryList(QDir::Files), QStringList("c.mp3"));
  EXPECT_EQ(LogWithoutDates(home),
            "DATE\r\nStart - 一括\r\n\r\n\r\n"
            "DATE\r\n< 曲 one >\r\n\r\n"
            "  o Complete\r\n    http://site.test/one/a.mp3\r\n\r\n"
            "  o Complete\r\n    http://site.test/one/sub/b.mp3\r\n\r\n\r\n\r\n\r\n"
            "DATE\r\n< 曲 two >\r\n\r\n"
            "  o Complete\r\n    http://site.test/two/c.mp3\r\n\r\n"
            "  ? Skip - None\r\n    http://site.test/two/gone.mp3\r\n\r\n"
            "\r\n\r\n\r\n");
  EXPECT_TRUE(home.Read("Conf.txt").startsWith("form left = 130\r\n"));
  EXPECT_TRUE(home.Read("reglist.txt").startsWith("[sub url]\r\n"));
  EXPECT_TRUE(program.Errors().contains("[1/2] 曲 one\n"));
  EXPECT_TRUE(program.Errors().contains(
      "ジョブ 2、ファイル 完了 3・失敗 0・スキップ 1、31 バイト（リンク切れ 1）\n保存先: " +
      home.Path("one") + "\n"));
  EXPECT_EQ(program.Output(), QString());
}

TEST_F(ProgramTest, EndsWithTwoWhenARowOrAJobFails) {
  home.Write(kList, ListOf({"three", "one"}));
  EXPECT_EQ(program.Run({"-a", "-f", kList}), 2);
  EXPECT_TRUE(
      LogWithoutDates(home).contains("  x Error 57\r\n    http://site.test/three/cut.mp3\r\n"));
  EXPECT_TRUE(QDir(home.Path("three")).isEmpty());
  EXPECT_EQ(home.Read("one/a.mp3"), "first song") << "the jobs after it are done";

  home.Write(kList, ListOf({"none"}));
  EXPECT_EQ(program.Run({"-a", "-f", kList}), 2);
  EXPECT_TRUE(program.Errors().contains("URL が見つかりません！"));
  EXPECT_TRUE(program.Errors().contains("\nルートURLが見つからないジョブ: 「曲 none」\n"));
}

TEST_F(ProgramTest, RefusesToStartWithAClearMessage) {
  const QString list = home.Write("list.dat", ListOf({"one"}));
  const QString taken = home.Write("taken.dat", ListOf({"one"}));
  RunLock otherRun;
  ASSERT_TRUE(otherRun.Acquire(taken, home.Path()));
  const QString binary = home.Write("binary.dat", "x root = y\r\n");
  const std::vector<std::pair<QStringList, QString>> cases = {
      {{"-a", "25:00", "-f", list},
       "エラー発生: time の指定が不正です。 / 25:00 → 11:34 の形式（時：分）\n"},
      {{"-a", "-speed", "1x", "-f", list},
       "エラー発生: speed の指定が不正です。 / 1x → 0 から 1000000 までの数\n"},
      {{"-a", "-f", "none.dat"}, "エラー発生: ＵＲＬリスト読み込みエラー / none.dat\n"},
      {{"-a"}, "エラー発生: 実行するファイルが指定されていない、もしくは不正です！\n"},
      {{"-a", "-f", binary}, "エラー発生: ＵＲＬリスト読み込みエラー / " + binary},
      {{"-a", "-f", taken}, "他の自動実行で使用中です。 / " + taken},
      {{"-f", list}, "zentorin -auto -file"},
  };
  for (const auto& [arguments, error] : cases) {
    ProgramRun run(home, server);
    EXPECT_EQ(run.Run(arguments), 1);
    EXPECT_TRUE(run.Errors().contains(error)) << run.Errors().toStdString();
  }
  EXPECT_TRUE(server.Requests().isEmpty());
}

TEST_F(ProgramTest, TellsAWrongChoiceAndGoesOn) {
  home.Write("list.dat", ListOf({"one"}));
  const QByteArray choices = "[fetch]\ntries=many\n";
  home.Write("choices.ini", choices);
  EXPECT_EQ(program.Run({"-a", "-connections", "1", "-speed", "1000", "-f", "list.dat"}), 0);
  EXPECT_TRUE(program.Errors().contains(home.Path("choices.ini") + "」の「fetch/tries」"));
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(home.Read("choices.ini"), choices) << "what holds for one run is not kept";
}

TEST_F(ProgramTest, AnswersHelpAndVersionBeforeAnythingElse) {
  EXPECT_EQ(program.Run({"-a", "--help"}), 0);
  EXPECT_TRUE(program.Output().contains("-quit"));
  EXPECT_EQ(program.Run({"--version"}), 0);
  EXPECT_EQ(program.Output(), "Zentorin 0.1.0\n");
  EXPECT_TRUE(QDir(home.Path()).isEmpty());
}

TEST_F(ProgramTest, SilentBusesAndADeadDisplayHoldNothingUp) {
  QLocalServer silent;
  ASSERT_TRUE(silent.listen(home.Path("silent")));
  const QString unreachable = "ディスプレイ「:54321」に接続できません。\n";
  home.Write(kList, ListOf({"one"}));
  ProgramRun windowed(home, server);
  for (ProgramRun* const each : {&program, &windowed}) {
    each->SetBuses("unix:path=" + silent.fullServerName());
    each->environment.insert("DISPLAY", ":54321");
  }
  EXPECT_EQ(program.Run({"-a", "-q", "-f", kList}), 0);
  EXPECT_TRUE(program.Errors().startsWith(unreachable));
  EXPECT_EQ(home.Read("one/a.mp3"), "first song");
  EXPECT_EQ(windowed.Run({}), 1) << "a window was asked for";
  EXPECT_TRUE(windowed.Errors().startsWith(unreachable + "ウィンドウを表示できません。"));
}

// A run on the song that never ends, stopped by signals.
class ProgramCancelTest : public ProgramTest {
 protected:
  ProgramCancelTest() { home.Write("list.dat", ListOf({"four"})); }

  void WaitForRequest(const QString& target, int hits) {
    while (server.Hits(target) < hits) {
      ASSERT_TRUE(QCoro::waitFor(
          qCoro(&server, &LoopbackServer::RequestReceived, std::chrono::seconds(30))));
    }
  }

  QStringList arguments = {"-a", "-f", "list.dat"};
};

TEST_F(ProgramCancelTest, ASignalEndsAPageOrATransferAndLeavesLogAndSettingsButNoPartialFile) {
  program.Start(arguments);
  WaitForRequest("/four/long.mp3", 1);
  program.Send(SIGINT);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_TRUE(QDir(home.Path("four")).isEmpty());
  EXPECT_TRUE(LogWithoutDates(home).contains("  - Cancel    http://site.test/four/long.mp3"));
  EXPECT_FALSE(home.Read("Conf.txt").isNull());
  EXPECT_TRUE(program.Errors().contains("中止: ジョブ 1"));

  server.Route("/four/index.html", Answer().Ends(Answer::Ending::Silent));
  program.Start(arguments);
  WaitForRequest("/four/index.html", 2);
  program.Send(SIGTERM);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_EQ(server.Hits("/four/long.mp3"), 1);
}

TEST_F(ProgramCancelTest, ASignalWhileADisplayIsSilentEndsTheProgramAtOnce) {
  QLocalServer display;
  const QString number = QString::number(QCoreApplication::applicationPid());
  display.setSocketOptions(QLocalServer::AbstractNamespaceOption);
  ASSERT_TRUE(display.listen("/tmp/.X11-unix/X" + number));
  program.environment.insert("DISPLAY", u':' + number);
  program.Start(arguments);
  ASSERT_TRUE(display.waitForNewConnection(30'000));
  QLocalSocket* const asking = display.nextPendingConnection();
  program.Send(SIGINT);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_EQ(program.Errors(), QString());
  EXPECT_TRUE(asking->state() == QLocalSocket::UnconnectedState ||
              asking->waitForDisconnected(30'000))
      << "who asks the display has outlived the program";
}

TEST_F(ProgramCancelTest, ASignalEndsTheCountdown) {
  if (QTime::currentTime() >= QTime(23, 57)) GTEST_SKIP() << "no later start time is left today";
  arguments.insert(1, "23:59");
  program.Start(arguments);
  ASSERT_TRUE(program.WaitForError("開始までの時間"));
  ProgramRun second(home, server);
  EXPECT_EQ(second.Run(arguments), 1) << "the list is taken by the first run";
  program.Send(SIGTERM);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_TRUE(server.Requests().isEmpty());
}

// A power action at the end of a batch, on a bus where the test plays the services.
class ProgramPowerTest : public ProgramTest {
 protected:
  ProgramPowerTest() {
    home.Write("list.dat", ListOf({"two"}) + "2 skip = 1\r\n");
    program.SetBuses(services.Address());
  }

  int RunAndThen(const QString& action) {
    return program.Run({"-a", "-q", action, "-f", "list.dat"});
  }
  // Standard error has that line once.
  bool Says(const QString& line) { return program.Errors().count(line + u'\n') == 1; }

  PrivateBus services;
  const QString notice =
      "Notify(Zentorin,0,zentorin,一括ダウンロード,処理終了: ジョブ 1、"
      "ファイル 完了 1・失敗 0・スキップ 1、10 バイト（リンク切れ 1）,,,-1)";
};

TEST_F(ProgramPowerTest, ABatchWithoutADisplayEndsWithItsPowerActionAndItsExitStatus) {
  const QString hold = "Inhibit(sleep:idle,Zentorin,一括ダウンロードの実行中,block)";
  server.RouteTo("/two/c.mp3", [&](const ReceivedRequest&) {
    services.WaitForCall(hold);
    return Answer::Text("third song", "audio/mpeg");
  });
  EXPECT_EQ(RunAndThen("shutdown"), 0);
  const QStringList& calls = services.calls;
  EXPECT_EQ(calls.value(0), hold);
  // These two travel by different ways.
  const QStringList ended = calls.mid(1, 2);
  EXPECT_TRUE(ended.contains("released"));
  EXPECT_TRUE(ended.contains(notice)) << calls.join(u' ').toStdString();
  EXPECT_EQ(calls.mid(3), QStringList({"CanPowerOff()", "PowerOffWithFlags(16)"}));
  EXPECT_TRUE(Says("「シャットダウン」を要求し、受け付けられました。"));
}

TEST_F(ProgramPowerTest, ARefusalIsToldOnceAlsoByAWindowAndChangesNoExitStatus) {
  services.answers["CanHibernate"] = "na";
  EXPECT_EQ(RunAndThen("h"), 0);
  EXPECT_TRUE(Says("「休止」を実行できません。このコンピュータは対応していません。"));
  EXPECT_EQ(services.calls.last(), "CanHibernate()");
  program.environment.insert("QT_QPA_PLATFORM", "offscreen");
  services.answers["CanReboot"] = "challenge";
  EXPECT_EQ(RunAndThen("r"), 0);
  EXPECT_TRUE(Says("「再起動」を実行できません。管理者の認証が必要です。"));
  EXPECT_EQ(services.calls.last(), "CanReboot()");
}

TEST_F(ProgramPowerTest, ADryRunTouchesNoService) {
  program.environment.insert("ZENTORIN_POWER", "dry-run");
  EXPECT_EQ(RunAndThen("l"), 0);
  EXPECT_EQ(services.calls, QStringList());
  const QString said =
      "「ログオフ」は試行のため実行しません（呼び出し: TerminateSession(自分のセッション)）。";
  EXPECT_TRUE(LogWithoutDates(home).endsWith("DATE\r\n" + said + "\r\n\r\n\r\n"));
  EXPECT_TRUE(Says(said));
}

TEST_F(ProgramPowerTest, TheNoticeArrivesThoughTheProgramEndsAtOnce) {
  EXPECT_EQ(RunAndThen("close"), 0);
  services.WaitForCall(notice);
}

}  // namespace
}  // namespace zentorin::test
