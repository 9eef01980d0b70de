// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QStandardPaths>

#include "base/wait.h"
#include "download/result_code.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

using namespace std::chrono_literals;

// The program against a tool that behaves like StreamGet, on a display of its own.
class StreamGetCaptureTest : public DownloadTest {
 protected:
  StreamGetCaptureTest() {
    options.streamingTool = ToolLookup::kStreamGet;
    home.Write(QStringLiteral("tool/StreamGET.EXE"), "");
    home.Write(QStringLiteral("save/kept"), "");
  }

  void SetUp() override {
    const QString program = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (program.isEmpty()) GTEST_SKIP() << "Xvfb is not installed";
    display_.start(program, {QStringLiteral("-displayfd"), QStringLiteral("1"),
                             QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    ASSERT_TRUE(display_.waitForReadyRead());
    qputenv("DISPLAY", ":" + display_.readLine().trimmed());
  }

  void TearDown() override {
    display_.kill();
    display_.waitForFinished();
  }

  // What a compatibility layer would have written for the installed tool.
  void Install(const QByteArray& mode) const {
    home.Write(QStringLiteral("data/applications/wine/getasf.desktop"),
               "[Desktop Entry]\nType=Application\nName=GetASFStream\nExec=" +
                   QByteArray(ZENTORIN_FAKE_STREAM_GET) + ' ' + mode +
                   "\nPath=" + home.Path(QStringLiteral("tool")).toUtf8() + '\n');
  }

  int Capture(const QByteArray& mode) {
    Install(mode);
    return QCoro::waitFor(capture.Capture(context, QStringLiteral("mms://m.test/song.wmv"),
                                          home.Path(QStringLiteral("save/song.wmv"))));
  }

  QProcess display_;
  XdgFolders Folders() const {
    XdgFolders folders;
    folders.data = {home.Path(QStringLiteral("data"))};
    return folders;
  }

  InstalledPrograms programs{Folders()};
  X11ToolWindows windows;
  ExternalStreamCapture capture{programs, windows, {.stall = 1500ms}};
};

TEST_F(StreamGetCaptureTest, AToolThatAsksIsAnsweredAndRecordsTheStream) {
  QProcess stranger;
  stranger.start(QStringLiteral(ZENTORIN_FAKE_STREAM_GET), {QStringLiteral("stranger")});
  while (windows.List().empty()) QCoro::waitFor(YieldToEventLoop());
  QStringList shown;
  QObject::connect(&board, &StatusBoard::Changed, &board,
                   [&] { shown.append(board.Status() + u' ' + board.Done()); });
  EXPECT_EQ(Capture("record"), kComplete);
  EXPECT_EQ(home.Read(QStringLiteral("save/song.wmv")), "recorded");
  EXPECT_TRUE(shown.join(u'|').contains(QStringLiteral("45%"))) << qPrintable(shown.join(u'|'));
  EXPECT_EQ(board.Done(), QStringLiteral("0.45"));
  EXPECT_EQ(stranger.state(), QProcess::Running) << "the dialog of another program was answered";
  EXPECT_FALSE(capture.AskToolToClose());
  stranger.kill();
  stranger.waitForFinished();
}

TEST_F(StreamGetCaptureTest, AToolThatStandsStillIsToldYesAndEnded) {
  EXPECT_EQ(Capture("stuck"), kDownloadFailed);
  EXPECT_EQ(home.Read(QStringLiteral("tool/answered")), "yes");
  EXPECT_EQ(windows.List().size(), 0U);
}

TEST_F(StreamGetCaptureTest, AFileThatTheToolHasAlreadyIsSkipped) {
  EXPECT_EQ(Capture("exists"), kSkip);
  EXPECT_EQ(windows.List().size(), 0U);
}

TEST_F(StreamGetCaptureTest, AWindowIsShownHiddenAndEnded) {
  QProcess tool;
  tool.start(QStringLiteral(ZENTORIN_FAKE_STREAM_GET), {QStringLiteral("exists")});
  std::vector<ToolWindow> list;
  while (list.empty() || !list.front().visible || list.front().processId == 0) {
    list = windows.List();
  }
  const quint32 id = list.front().id;
  EXPECT_TRUE(list.front().IsOfClass(QStringLiteral("StreamGet.exe")));
  EXPECT_EQ(list.front().processId, tool.processId());
  windows.Show(id, false);
  EXPECT_FALSE(windows.List().front().visible);
  windows.Show(id, true);
  EXPECT_TRUE(windows.List().front().visible);
  windows.EndProgram(id);
  EXPECT_TRUE(tool.waitForFinished());
}

TEST_F(StreamGetCaptureTest, AToolThatDoesNotComeUpIsFatalForItsRow) {
  home.Write(QStringLiteral("data/applications/wine/getasf.desktop"),
             "[Desktop Entry]\nType=Application\nName=GetASFStream\nExec=/bin/false\nPath=" +
                 home.Path(QStringLiteral("tool")).toUtf8() + '\n');
  const int code = QCoro::waitFor(capture.Capture(context, QStringLiteral("mms://m.test/a.wmv"),
                                                  home.Path(QStringLiteral("save/a.wmv"))));
  EXPECT_EQ(code, kFatal);
  EXPECT_TRUE(board.Status().contains(home.Path(QStringLiteral("tool"))));
}

}  // namespace
}  // namespace zentorin::test
