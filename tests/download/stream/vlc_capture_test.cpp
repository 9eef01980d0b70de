// SPDX-License-Identifier: MIT
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <array>
#include <csignal>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include "download/stream/tool_process.h"
#include "tests/download/stream/capture_fixture.h"

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

// What a program says to options, which have no blanks inside, and a last word.
QByteArray OutputOf(const QString& program, const QString& options, const QString& word) {
  QProcess process;
  process.start(program, options.split(' ', Qt::SkipEmptyParts) + QStringList(word));
  process.waitForFinished();
  return process.readAllStandardOutput() + process.readAllStandardError();
}

// Ids of the processes that have a text among their arguments.
QList<pid_t> ProcessesNaming(const QString& text) {
  QList<pid_t> found;
  for (const QString& id : QDir("/proc").entryList(QDir::Dirs)) {
    QFile words("/proc/" + id + "/cmdline");
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
class VlcCaptureTest : private Unprivileged, public CaptureTest {
 protected:
  VlcCaptureTest() { qputenv("HOME", home.Path().toUtf8()); }

  void SetUp() override {
    for (const char* tool : {"vlc", "ffmpeg", "ffprobe"}) {
      if (QStandardPaths::findExecutable(tool).isEmpty()) GTEST_SKIP() << tool << " is missing";
    }
  }

  void TearDown() override {
    EXPECT_EQ(ProcessesNaming(home.Path()), QList<pid_t>());
    EXPECT_FALSE(Saved().contains(".part")) << Saved().toStdString();
  }

  QByteArray Stream(const QString& name, double seconds = kSeconds) const {
    const char* picture =
        name.endsWith(".wmv") ? "-f lavfi -i testsrc=size=320x240:rate=10 -c:v wmv2" : "";
    const char* sound = name.endsWith(".ts") ? "mp2" : "wmav2";
    EXPECT_EQ(
        OutputOf(
            "ffmpeg",
            QString("-v error -f lavfi -i sine %1 -c:a %2 -t %3").arg(picture, sound).arg(seconds),
            home.Path(name)),
        "");
    return home.Read(name);
  }

  // Container, codecs and length as ffprobe reads them: "asf", "wmav2 wmv2".
  void ExpectRecording(const QString& name, const QByteArray& format,
                       const QByteArray& codecs) const {
    QByteArrayList lines =
        OutputOf("ffprobe",
                 "-v error -show_entries format=format_name,duration:stream=codec_name "
                 "-of default=nokey=1:noprint_wrappers=1",
                 home.Path("save/" + name))
            .trimmed()
            .split('\n');
    ASSERT_GE(lines.size(), 3) << lines.join(' ').constData();
    EXPECT_NEAR(lines.takeLast().toDouble(), kSeconds, 1.0);
    EXPECT_EQ(lines.takeLast(), format);
    std::ranges::sort(lines);
    EXPECT_EQ(lines.join(' '), codecs);
  }

  RowCode Record(const QString& target, const QString& name = "song.wmv") {
    return Capture(vlc, server.Url(target), name);
  }

  // The whole run of a row, with the real player.
  RunOutcome RunRow(const QString& target, StreamCapture& player) {
    DownloadContext base = DownloadContextOf(workspace);
    const DownloadContext context{{base.engine, base.http, base.activity, player, base.drives,
                                   base.options, base.clock, base.choices},
                                  base.messages,
                                  base.opener,
                                  base.log,
                                  base.job,
                                  base.files};
    DownloadRun run(context, DownloadRun::Mode::Single, cancel.Token(), [](const FinishedRow&) {});
    Add(server.Url(target));
    return QCoro::waitFor(run.Run());
  }

  // Serves a stream bit by bit, so that there is a middle, and as a live one: without a length.
  void RouteSlowly(const QString& target) {
    Answer answer = Answer::Text(Stream("slow.wmv", kLongSeconds), "video/x-ms-wmv");
    answer.contentLength = "";
    answer.ending = Answer::Ending::Close;
    answer.pieceBytes = 8192;
    answer.pieceInterval = 100ms;
    server.Route(target, answer);
  }

  // Calls `act` once when the recording has got on.
  template <typename Act>
  void InTheMiddle(Act act) {
    QObject::connect(&activity, &Activity::Changed, &activity, [this, act] {
      if (activity.Now().bytes == 0 || acted_) return;
      acted_ = true;
      act();
    });
  }

  InstalledPrograms programs{XdgFolders::FromEnvironment()};
  FakeToolWindows windows;
  ExternalStreamCapture vlc{programs, windows, messages, opener};
  bool acted_ = false;
};

TEST_F(VlcCaptureTest, ARowIsRecordedAsItIsAndSoundConvertedWhateverTheFileIsCalled) {
  server.Route("/a%7B1%7D.wmv", Answer::Text(Stream("a.wmv")));
  RunRow("/a{1}.wmv", vlc);
  EXPECT_EQ(Marks(), "o");
  EXPECT_EQ(Saved(), "a{1}.wmv|song.wmv");
  ExpectRecording("a{1}.wmv", "asf", "wmav2 wmv2");
  // A display that VLC cannot use gives it no window: it records all the same.
  options.vlcShow = true;
  windows.windows = {ToolWindow()};
  qunsetenv("DISPLAY");
  server.Route("/a.wma", Answer::Text(Stream("a.wma")));
  const QString name = "日本 \"}',x{=#$%d\\\\: :sout=.mp3";
  EXPECT_EQ(Record("/a.wma", name), RowCode::Complete);
  ExpectRecording(name, "mp3", "mp3");
}

TEST_F(VlcCaptureTest, NoServerLeadsThePlayerToWhatLiesOnThisMachineOrIsNoStream) {
  const QByteArray own = "file://" + home.Path("own.wmv").toUtf8();
  const QByteArray stream = Stream("own.wmv");
  server.Route("/page.php", Answer::Text("<html>no stream</html>"));
  server.Route("/redirect.wmv", Answer::Redirect(own));
  server.Route("/m3u.wmv", Answer::Text("#EXTM3U\n" + own + '\n', "audio/x-mpegurl"));
  server.Route("/asx.php", Answer::Text("[Reference]\r\nRef1=" + own + "\r\n"));
  server.Route("/camera.php", Answer::Text("#EXTM3U\nv4l2:///dev/video0\n", "audio/x-mpegurl"));
  // A list that VLC's codec library reads.
  server.Route("/list.php", Answer::Text("<?xml version=\"1.0\"?><MPD profiles=\"urn:mpeg:dash:"
                                         "profile:isoff-live:2011\"><BaseURL>" +
                                         own + "</BaseURL></MPD>"));
  using Case = std::pair<QString, QString>;
  for (const auto& [target, refused] :
       {Case("/page.php", ""), Case("/missing.wmv", ""), Case("/redirect.wmv", " → " + own),
        Case("/m3u.wmv", " → " + own), Case("/asx.php", " → " + own),
        Case("/camera.php", " → v4l2:///dev/video0"), Case("/list.php", " → 形式: dash")}) {
    EXPECT_EQ(Record(target), RowCode::DownloadFailed) << target.toStdString();
    EXPECT_EQ(home.Read("save/song.wmv"), "an old one") << target.toStdString();
    EXPECT_TRUE(recorded.reason.endsWith(refused)) << recorded.reason.toStdString();
  }
  const auto list = [](const QByteArray& segment) {
    return Answer::Text(
        "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\n" + segment + "\n#EXT-X-ENDLIST\n",
        "application/x-mpegurl");
  };
  server.Route("/own.m3u8", list("file://" + home.Path("live.ts").toUtf8()));
  server.Route("/live.ts", Answer::Text(Stream("live.ts"), "video/mp2t"));
  server.Route("/live.m3u8", list("live.ts"));
  EXPECT_EQ(Record("/own.m3u8", "live.ts"), RowCode::DownloadFailed);
  EXPECT_EQ(Saved(), "song.wmv");
  // To streams elsewhere it may be led.
  EXPECT_EQ(Record("/live.m3u8", "live.ts"), RowCode::Complete) << recorded.reason.toStdString();
  EXPECT_GT(home.Read("save/live.ts").size(), 10'000);
  server.Route("/a.wmv", Answer::Text(stream));
  server.Route("/moved.wmv", Answer::Redirect(server.Url("/a.wmv").toUtf8()));
  EXPECT_EQ(Record("/moved.wmv"), RowCode::Complete);
}

TEST_F(VlcCaptureTest, ACancelEndsThePlayerSoonAndLeavesNoFile) {
  RouteSlowly("/s.wmv");
  QElapsedTimer sinceCancel;
  InTheMiddle([&] {
    EXPECT_EQ(Saved().count(".part"), 1);
    EXPECT_FALSE(Status().contains('/')) << "no length: " << Status().toStdString();
    sinceCancel.start();
    cancel.Cancel();
  });
  RunRow("/s.wmv", vlc);
  ASSERT_TRUE(sinceCancel.isValid());
  EXPECT_LT(sinceCancel.elapsed(), 5000);
  EXPECT_EQ(Saved(), "song.wmv");
}

TEST_F(VlcCaptureTest, APlayerThatIsKilledHasRecordedNothingWhole) {
  const auto kill = [this] {
    const auto players = ProcessesNaming(home.Path());
    EXPECT_EQ(players.size(), 1);
    for (const pid_t player : players) ::kill(player, SIGKILL);
  };
  server.RouteTo("/silent.wmv", [&](const ReceivedRequest&) {
    kill();
    return Answer().Ends(Answer::Ending::Silent);
  });
  EXPECT_EQ(Record("/silent.wmv"), RowCode::DownloadFailed);
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");

  RouteSlowly("/s.wmv");
  InTheMiddle(kill);
  EXPECT_EQ(Record("/s.wmv"), RowCode::Imperfect);
  EXPECT_NE(home.Read("save/song.wmv"), "an old one") << "what there is of the new one";
}

TEST_F(VlcCaptureTest, AStreamThatStallsEndsAfterAWhile) {
  ExternalStreamCapture hasty(programs, windows, messages, opener,
                              {.stall = 3s, .stallOnceLengthIsKnown = 2s});
  server.Route("/s.wmv", Answer().Ends(Answer::Ending::Silent));
  EXPECT_EQ(Capture(hasty, server.Url("/s.wmv"), "song.wmv"), RowCode::DownloadFailed);
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");

  // What came before counts as the recording.
  const QByteArray stream = Stream("a.wmv", kLongSeconds);
  server.Route("/s.wmv", Answer::Text(stream).Ends(Answer::Ending::Stall, stream.size() / 2));
  EXPECT_EQ(Capture(hasty, server.Url("/s.wmv"), "song.wmv"), RowCode::Complete);
  EXPECT_GT(home.Read("save/song.wmv").size(), 1000);
}

TEST_F(VlcCaptureTest, AFullDiskEndsTheRunAndKeepsTheEarlierRecording) {
  ExternalStreamCapture full(programs, windows, messages, opener,
                             {.freeBytes = [](const QString&) { return qint64{4095}; }});
  job.EditFlag(TargetUrlItem::OverWrite, true);
  RouteSlowly("/song.wmv");
  EXPECT_TRUE(RunRow("/song.wmv", full).fatal);
  EXPECT_EQ(Marks(), "-");
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
}

TEST(ToolProcessTest, AToolDoesNotOutliveTheProgramThatDies) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const pid_t program = ::fork();
  if (program == 0) {
    ToolProcess tool;
    tool.Start({"/bin/sleep", "60"});
    const auto id = static_cast<pid_t>(tool.Id());
    [[maybe_unused]] const auto written = ::write(ends[1], &id, sizeof id);
    ::pause();
  }
  pid_t tool = 0;
  ASSERT_EQ(::read(ends[0], &tool, sizeof tool), static_cast<ssize_t>(sizeof tool));
  ::kill(program, SIGKILL);
  ::waitpid(program, nullptr, 0);
  QElapsedTimer waited;
  waited.start();
  // A process that has ended but was not picked up yet has no words left.
  while (ProcessesNaming("sleep").contains(tool) && waited.elapsed() < 30'000) ::usleep(10'000);
  EXPECT_LT(waited.elapsed(), 30'000);
}

}  // namespace
}  // namespace zentorin::test
