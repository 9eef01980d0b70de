// SPDX-License-Identifier: MIT
#include "launch/process_starter.h"

#include <QDeadlineTimer>
#include <QFile>
#include <csignal>
#include <optional>

#include <QCoro/QCoroTimer>
#include <gtest/gtest.h>

#include "tests/launch/xdg_tree.h"
#include "tests/support/private_bus.h"

namespace zentorin::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr ProcessStarter::Times kTimes{
    .comeUp = seconds(20), .settle = seconds(20), .fileManager = seconds(20)};

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
  EXPECT_EQ(OutcomeOf(tree_.Write("bin/no-program", "x")), ProgramStart::NotStarted);
}

TEST_F(ProcessStarterTest, AProgramGetsItsArgumentsAsTheyAreAndLivesOnAfterItsStarter) {
  const QByteArray writeDown = R"(for a in $$ "$@"; do echo "$a"; done > "$0.new")"
                               "\nmv \"$0.new\" \"$0.out\"\n";
  const auto written = [this](const QString& name) {
    EXPECT_TRUE(RunUntil([&] { return QFile::exists(tree_.Path(name)); }));
    return QString::fromUtf8(tree_.Read(name)).split(u'\n', Qt::SkipEmptyParts);
  };
  ProcessStarter::Times times = kTimes;
  times.settle = milliseconds(50);
  starter_ = std::make_unique<ProcessStarter>(tree_.Folders(), times);
  const QString odd = tree_.Path("a `b` \"c\" $(touch x)?a=1&b='c'.mp3");
  const QString stay = tree_.AddCommand("stay", writeDown + "exec sleep 60");
  EXPECT_EQ(OutcomeOf(stay, {"-q", odd}), ProgramStart::Running);
  QStringList words = written("bin/stay.out");
  const int pid = words.takeFirst().toInt();
  ASSERT_GT(pid, 0);
  EXPECT_EQ(words, QStringList({"-q", odd}));
  EXPECT_FALSE(starter_->ShellOpen(odd));
  tree_.AddCommand("xdg-open", writeDown);
  EXPECT_TRUE(starter_->ShellOpen(odd));
  EXPECT_EQ(written("bin/xdg-open.out").mid(1), QStringList(odd));
  starter_.reset();
  EXPECT_EQ(kill(pid, 0), 0);
  EXPECT_EQ(getsid(pid), pid);
  kill(pid, SIGKILL);
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
}

}  // namespace
}  // namespace zentorin::test
