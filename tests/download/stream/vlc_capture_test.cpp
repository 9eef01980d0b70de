// SPDX-License-Identifier: MIT
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <array>
#include <csignal>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include "download/result_code.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/tool_process.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"
#include "tests/download/stream/no_tool_windows.h"

namespace zentorin::test {
namespace {

using namespace std::chrono_literals;

// VLC refuses to run as root: then the whole test gives up that right, before it makes any file.
struct Unprivileged {
  Unprivileged() {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() != 0) return;
    const bool dropped =
        ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
    if (!dropped) std::abort();
    qunsetenv("XDG_RUNTIME_DIR");
  }
};

QByteArray OutputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  process.waitForFinished();
  return process.readAllStandardOutput() + process.readAllStandardError();
}

// Ids of the processes that have a text among their arguments.
QList<pid_t> ProcessesNaming(const QString& text) {
  QList<pid_t> found;
  for (const QString& id : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    QFile words(QStringLiteral("/proc/") + id + QStringLiteral("/cmdline"));
    if (id.toInt() > 0 && id.toInt() != ::getpid() && words.open(QIODevice::ReadOnly) &&
        words.readAll().contains(text.toUtf8())) {
      found.append(id.toInt());
    }
  }
  return found;
}

constexpr double kSeconds = 5;
// The player holds back some seconds before it writes: what is to have a middle is longer.
constexpr double kLongSeconds = 20;

// The real VLC against streams that ffmpeg made, served on loopback.
class VlcCaptureTest : private Unprivileged, public DownloadTest {
 protected:
  VlcCaptureTest() { qputenv("HOME", home.Path().toUtf8()); }

  void SetUp() override {
    for (const char* tool : {"vlc", "ffmpeg", "ffprobe"}) {
      if (QStandardPaths::findExecutable(QString::fromUtf8(tool)).isEmpty()) {
        GTEST_SKIP() << tool << " is not installed";
      }
    }
  }

  QByteArray Stream(const QString& name, double seconds = kSeconds) const {
    QStringList words = {QStringLiteral("-v"), QStringLiteral("error")};
    if (name.endsWith(QStringLiteral(".wmv"))) {
      words += {QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                QStringLiteral("testsrc=size=320x240:rate=10")};
    }
    words += {QStringLiteral("-f"),    QStringLiteral("lavfi"), QStringLiteral("-i"),
              QStringLiteral("sine"),  QStringLiteral("-t"),    QString::number(seconds),
              QStringLiteral("-c:v"),  QStringLiteral("wmv2"),  QStringLiteral("-c:a"),
              QStringLiteral("wmav2"), home.Path(name)};
    const QByteArray said = OutputOf(QStringLiteral("ffmpeg"), words);
    EXPECT_EQ(said, "");
    return home.Read(name);
  }

  // Container, codecs and length as ffprobe reads them: "asf wmv2,wmav2".
  void ExpectRecording(const QString& path, const QByteArray& format,
                       const QByteArrayList& codecs) const {
    const QByteArrayList lines =
        OutputOf(
            QStringLiteral("ffprobe"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
             QStringLiteral("format=format_name,duration:stream=codec_name"), QStringLiteral("-of"),
             QStringLiteral("default=nokey=1:noprint_wrappers=1"), path})
            .trimmed()
            .split('\n');
    ASSERT_GE(lines.size(), 3) << lines.join(' ').constData();
    EXPECT_EQ(lines[lines.size() - 2], format);
    EXPECT_NEAR(lines.last().toDouble(), kSeconds, 1.0);
    QByteArrayList found = lines.mid(0, lines.size() - 2);
    std::ranges::sort(found);
    EXPECT_EQ(found, codecs);
  }

  int Capture(const QString& target, const QString& path) {
    return QCoro::waitFor(capture.Capture(context, server.Url(target), path));
  }

  // Serves a stream bit by bit, so that there is a middle.
  void RouteSlowly(const QString& target) {
    Answer answer =
        Answer::Text(Stream(QStringLiteral("slow.wmv"), kLongSeconds), "video/x-ms-wmv");
    answer.pieceBytes = 8192;
    answer.pieceInterval = 100ms;
    server.Route(target, answer);
  }

  // Calls `act` once when the recording has got on.
  template <typename Act>
  void InTheMiddle(Act act) {
    QObject::connect(&board, &StatusBoard::ProgressChanged, &board, [this, act] {
      if (board.FileBytes() == 0 || acted_) return;
      acted_ = true;
      act();
    });
  }

  InstalledPrograms programs{XdgFolders::FromEnvironment()};
  NoToolWindows windows;
  ExternalStreamCapture capture{programs, windows};
  DownloadContext context{.engine = engine,
                          .http = http,
                          .state = state,
                          .board = board,
                          .messages = messages,
                          .capture = capture,
                          .opener = opener,
                          .log = log,
                          .drives = drives,
                          .options = options,
                          .clockOptions = clockOptions,
                          .job = job,
                          .files = files,
                          .clock = shownClock};
  bool acted_ = false;
};

// The stalls of these are short; all other times are the program's own.
class VlcStallTest : public VlcCaptureTest {
 protected:
  ExternalStreamCapture hasty{programs, windows, {.stall = 3s, .stallOnceLengthIsKnown = 2s}};
  int CaptureHastily(const QString& path) {
    return QCoro::waitFor(hasty.Capture(context, server.Url(QStringLiteral("/s.wmv")), path));
  }
};

TEST_F(VlcCaptureTest, ARowIsRecordedAsItIs) {
  server.Route(QStringLiteral("/a.wmv"), Answer::Text(Stream(QStringLiteral("a.wmv"))));
  DownloadRun run(context);
  Add(server.Url(QStringLiteral("/a.wmv")));
  QCoro::waitFor(run.Run());
  EXPECT_EQ(files.Row(0)[FileListRow::Mark], QStringLiteral("o"));
  ExpectRecording(home.Path(QStringLiteral("save/a.wmv")), "asf", {"wmav2", "wmv2"});
}

TEST_F(VlcCaptureTest, SoundIsConvertedWhateverTheFileIsCalled) {
  // Without a display there can be no window: it is recorded all the same.
  options.vlcShow = true;
  qunsetenv("DISPLAY");
  server.Route(QStringLiteral("/a.wma"), Answer::Text(Stream(QStringLiteral("a.wma"))));
  const QString path = home.Path(QStringLiteral("日本 \"}',x{=#$%d\\\\: :sout=.mp3"));
  EXPECT_EQ(Capture(QStringLiteral("/a.wma"), path), kComplete);
  ExpectRecording(path, "mp3", {"mp3"});
}

TEST_F(VlcCaptureTest, WhatIsNoStreamFailsAndLeavesNoFile) {
  server.Route(QStringLiteral("/page.php"), Answer::Text("<html>no stream</html>"));
  for (const char* target : {"/page.php", "/missing.wmv"}) {
    const QString path = home.Path(QStringLiteral("out.wmv"));
    EXPECT_EQ(Capture(QString::fromUtf8(target), path), kDownloadFailed) << target;
    EXPECT_FALSE(QFile::exists(path)) << target;
  }
}

TEST_F(VlcCaptureTest, ACancelEndsThePlayerWithinASecondAndLeavesNoFile) {
  RouteSlowly(QStringLiteral("/s.wmv"));
  QElapsedTimer sinceCancel;
  InTheMiddle([&] {
    sinceCancel.start();
    state.RequestCancel();
  });
  DownloadRun run(context);
  Add(server.Url(QStringLiteral("/s.wmv")));
  QCoro::waitFor(run.Run());
  ASSERT_TRUE(sinceCancel.isValid());
  EXPECT_LT(sinceCancel.elapsed(), 1000);
  EXPECT_EQ(ProcessesNaming(home.Path()), QList<pid_t>());
  EXPECT_FALSE(QFile::exists(home.Path(QStringLiteral("save/s.wmv"))));
}

TEST_F(VlcCaptureTest, APlayerThatIsKilledHasRecordedNothingWhole) {
  const QString path = home.Path(QStringLiteral("out.wmv"));
  RouteSlowly(QStringLiteral("/s.wmv"));
  InTheMiddle([&] {
    const auto players = ProcessesNaming(path);
    EXPECT_EQ(players.size(), 1);
    for (const pid_t player : players) ::kill(player, SIGKILL);
  });
  EXPECT_EQ(Capture(QStringLiteral("/s.wmv"), path), kImperfect);

  server.RouteTo(QStringLiteral("/silent.wmv"), [&](const ReceivedRequest&) {
    for (const pid_t player : ProcessesNaming(path)) ::kill(player, SIGKILL);
    return Answer().Ends(Answer::Ending::Silent);
  });
  EXPECT_EQ(Capture(QStringLiteral("/silent.wmv"), path), kDownloadFailed);
}

TEST_F(VlcStallTest, AStreamThatStallsEndsAfterAWhile) {
  const QByteArray stream = Stream(QStringLiteral("a.wmv"), kLongSeconds);
  const QString path = home.Path(QStringLiteral("out.wmv"));
  server.Route(QStringLiteral("/s.wmv"), Answer().Ends(Answer::Ending::Silent));
  EXPECT_EQ(CaptureHastily(path), kDownloadFailed);
  EXPECT_FALSE(QFile::exists(path));

  // What came before counts as the recording.
  server.Route(QStringLiteral("/s.wmv"),
               Answer::Text(stream).Ends(Answer::Ending::Stall, stream.size() / 2));
  EXPECT_EQ(CaptureHastily(path), kComplete);
  EXPECT_GT(QFile(path).size(), 0);
  EXPECT_EQ(ProcessesNaming(home.Path()), QList<pid_t>());
  EXPECT_EQ(WatchTimes().stall, 20s);
  EXPECT_EQ(WatchTimes().stallOnceLengthIsKnown, 10s);
}

TEST(ToolProcessTest, AToolDoesNotOutliveTheProgramThatDies) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const pid_t program = ::fork();
  if (program == 0) {
    ToolProcess tool;
    tool.Start({QStringLiteral("/bin/sleep"), QStringLiteral("60")});
    const auto id = static_cast<pid_t>(tool.Id());
    [[maybe_unused]] const auto written = ::write(ends[1], &id, sizeof id);
    ::pause();
  }
  pid_t tool = 0;
  ASSERT_EQ(::read(ends[0], &tool, sizeof tool), static_cast<ssize_t>(sizeof tool));
  ASSERT_GT(tool, 1);
  ::kill(program, SIGKILL);
  ::waitpid(program, nullptr, 0);
  QElapsedTimer waited;
  waited.start();
  // A process that has ended but was not picked up yet has no words left.
  while (ProcessesNaming(QStringLiteral("sleep")).contains(tool) && waited.elapsed() < 5000) {
    ::usleep(10'000);
  }
  EXPECT_FALSE(ProcessesNaming(QStringLiteral("sleep")).contains(tool));
}

}  // namespace
}  // namespace zentorin::test
