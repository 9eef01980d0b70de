// SPDX-License-Identifier: MIT
#include "launch/process_starter.h"

#include <QDeadlineTimer>
#include <QFile>
#include <csignal>
#include <optional>

#include <QCoro/QCoroTimer>
#include <gtest/gtest.h>

#include "base/drives.h"
#include "launch/desktop_opener.h"
#include "tests/launch/xdg_tree.h"
#include "tests/support/fakes.h"
#include "tests/support/private_bus.h"
#include "tests/support/recording_starter.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

using std::chrono::milliseconds;

constexpr ProcessStarter::Times kTimes{
    .comeUp = milliseconds(20000), .settle = milliseconds(50), .fileManager = milliseconds(20000)};

// Runs the event loop until `done` holds; false when that takes half a minute.
template <typename Condition>
bool RunUntil(Condition done) {
  const QDeadlineTimer limit(30'000);
  while (!done() && !limit.hasExpired()) QCoro::waitFor(QCoro::sleepFor(milliseconds(2)));
  return done();
}

class ProcessStarterTest : public testing::Test {
 protected:
  std::optional<ProgramStart> OutcomeOf(const QString& program, const QStringList& arguments = {}) {
    std::optional<ProgramStart> outcome;
    starter_->Start({.program = program, .arguments = arguments, .workingFolder = {}},
                    [&](ProgramStart start) { outcome = start; });
    RunUntil([&] { return outcome.has_value(); });
    return outcome;
  }

  XdgTree tree_;
  std::unique_ptr<ProcessStarter> starter_ =
      std::make_unique<ProcessStarter>(tree_.Folders(), kTimes);
};

TEST_F(ProcessStarterTest, TheFirstMomentsOfAProgramAreReported) {
  EXPECT_EQ(OutcomeOf(tree_.AddCommand("well")), ProgramStart::EndedWell);
  EXPECT_EQ(OutcomeOf(tree_.AddCommand("bad", "exit 3")), ProgramStart::EndedWithError);
  EXPECT_EQ(OutcomeOf(tree_.AddCommand("crash", "kill -SEGV $$")), ProgramStart::EndedWithError);
  EXPECT_EQ(OutcomeOf(tree_.Path("bin/missing")), ProgramStart::NotStarted);
  EXPECT_EQ(OutcomeOf(tree_.Write("bin/no-program", "x")), ProgramStart::NotStarted);
}

TEST_F(ProcessStarterTest, AProgramLivesOnAfterItsStarter) {
  const QString out = tree_.Path("pid");
  const QString command = tree_.AddCommand("stay", R"(echo $$ > "$1.new"; mv "$1.new" "$1"; )"
                                                   "exec sleep 60");
  EXPECT_EQ(OutcomeOf(command, {out}), ProgramStart::Running);
  ASSERT_TRUE(RunUntil([&] { return QFile::exists(out); }));
  const int pid = tree_.Read("pid").trimmed().toInt();
  ASSERT_GT(pid, 0);
  starter_.reset();
  EXPECT_EQ(kill(pid, 0), 0);
  EXPECT_EQ(getsid(pid), pid);
  kill(pid, SIGKILL);
}

TEST_F(ProcessStarterTest, AnEndOfTheStarterWhileAProgramStartsIsHarmless) {
  bool told = false;
  const QString program = tree_.AddCommand("well");
  starter_->Start({.program = program, .arguments = {}, .workingFolder = {}},
                  [&](ProgramStart) { told = true; });
  starter_.reset();
  EXPECT_FALSE(told);
}

// The whole way with real programs: entries in the folders, stubs that write down their arguments.
TEST_F(ProcessStarterTest, ThingsOpenInStubProgramsThatAreRegisteredByDesktopEntries) {
  const QByteArray writeDown = R"(for a; do echo "$a"; done > "$0.new"; mv "$0.new" "$0.out")";
  tree_.AddProgram("browser", "--new %u", "MimeType=x-scheme-handler/http;");
  tree_.AddProgram("player", "-q %f", "MimeType=audio/mpeg;");
  for (const char* name : {"browser", "player", "xdg-open"}) tree_.AddCommand(name, writeDown);
  Drives drives(tree_.Path("home"));
  RecordingMessageBoxes messages;
  RecordingTextWindows windows;
  DesktopOpener opener(drives, *starter_, messages, windows, tree_.Folders());

  const QString page = "http://a.test/$(touch x)?a=1&b='c'";
  const QString song = tree_.Path("a `b` \"c\".mp3");
  opener.PlayOrView(page);
  opener.PlayOrView(song);
  opener.OpenFolder(tree_.Path("my folder"));

  const auto written = [&](const char* name) {
    const QString file = u"bin/%1.out"_s.arg(name);
    EXPECT_TRUE(RunUntil([&] { return QFile::exists(tree_.Path(file)); })) << name;
    return QString::fromUtf8(tree_.Read(file));
  };
  EXPECT_EQ(written("browser"), "--new\n" + page + u'\n');
  EXPECT_EQ(written("player"), "-q\n" + song + u'\n');
  EXPECT_EQ(written("xdg-open"), tree_.Path("my folder") + u'\n');
  EXPECT_EQ(messages.Texts(), QStringList());
}

TEST_F(ProcessStarterTest, TheFileManagerIsAskedOverTheSessionBus) {
  PrivateBus bus;
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toUtf8());
  starter_ = std::make_unique<ProcessStarter>(tree_.Folders(), kTimes);
  const auto ask = [&] {
    std::optional<bool> shown;
    starter_->ShowFolder("/my folder", [&](bool answer) { shown = answer; });
    RunUntil([&] { return shown.has_value(); });
    return shown;
  };
  EXPECT_EQ(ask(), true);
  EXPECT_EQ(bus.calls, QStringList("ShowFolders(file:///my%20folder,)"));
  bus.Withdraw();
  EXPECT_EQ(ask(), false);
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  starter_ = std::make_unique<ProcessStarter>(tree_.Folders(), kTimes);
  EXPECT_EQ(ask(), false);
}

}  // namespace
}  // namespace zentorin::test
