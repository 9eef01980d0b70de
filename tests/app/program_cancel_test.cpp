// SPDX-License-Identifier: MIT
#include <QDir>
#include <csignal>

#include <QCoro/QCoroSignal>
#include <gtest/gtest.h>

#include "tests/app/program_run.h"
#include "tests/support/loopback_server.h"

namespace zentorin::test {
namespace {

// A run on a site whose song never ends, stopped by signals.
class ProgramCancelTest : public testing::Test {
 protected:
  ProgramCancelTest() {
    home.Write("list.dat", ListFile({{{"description", "endless"},
                                      {"root", "http://site.test/index.html"},
                                      {"file_pattern", R"x(href="(.+?\.mp3)")x"},
                                      {"save_path", "save"},
                                      {"depth", "0"}}}));
    server.Route("/index.html", Answer::Text(R"(<a href="long.mp3">a</a>)"));
    server.Route("/long.mp3", Answer::Generated(1'000'000).Ends(Answer::Ending::Stall, 500'000));
  }

  void WaitForRequest(const QString& target, int hits) {
    while (server.Hits(target) < hits) {
      ASSERT_TRUE(QCoro::waitFor(
          qCoro(&server, &LoopbackServer::RequestReceived, std::chrono::seconds(30))));
    }
  }

  QStringList arguments = {"-a", "-f", "list.dat"};
  LoopbackServer server;
  TempDir home;
  ProgramRun program{home, server.ConnectTo()};
};

TEST_F(ProgramCancelTest, ASignalInATransferLeavesNoPartialFileButLogAndSettings) {
  program.Start(arguments);
  // One request asks for the header, the second one for the body.
  WaitForRequest("/long.mp3", 2);
  program.Send(SIGINT);
  EXPECT_EQ(program.WaitForEnd(), 130) << program.Errors().toStdString();
  EXPECT_TRUE(QDir(home.Path("save")).isEmpty());
  EXPECT_TRUE(LogWithoutDates(home).contains("  - Cancel    http://site.test/long.mp3"));
  EXPECT_FALSE(home.Read("Conf.txt").isNull());
  EXPECT_TRUE(program.Errors().contains("中止: ジョブ 1"));
}

TEST_F(ProgramCancelTest, ASignalWhileAPageIsFetchedEndsTheBatch) {
  server.Route("/index.html", Answer().Ends(Answer::Ending::Silent));
  program.Start(arguments);
  WaitForRequest("/index.html", 1);
  program.Send(SIGTERM);
  EXPECT_EQ(program.WaitForEnd(), 130);
  EXPECT_FALSE(home.Read("Conf.txt").isNull());
  EXPECT_EQ(server.Hits("/long.mp3"), 0);
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

}  // namespace
}  // namespace zentorin::test
