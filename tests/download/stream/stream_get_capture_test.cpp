// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include "base/wait.h"
#include "download/result_code.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"

namespace zentorin::test {
namespace {

using namespace std::chrono_literals;

const QString kTool = ZENTORIN_FAKE_STREAM_GET;

// The program against a tool that behaves like StreamGet, on a display of its own.
// "save/song.wmv" was recorded before.
class StreamGetCaptureTest : public DownloadTest {
 protected:
  StreamGetCaptureTest() {
    options.streamingTool = ToolLookup::kStreamGet;
    home.Write("tool/StreamGET.EXE", "");
    home.Write("save/song.wmv", "an old one");
  }

  void SetUp() override {
    const QString program = QStandardPaths::findExecutable("Xvfb");
    if (program.isEmpty()) GTEST_SKIP() << "Xvfb is not installed";
    display_.start(program, {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(display_.waitForReadyRead());
    qputenv("DISPLAY", ":" + display_.readLine().trimmed());
  }

  void TearDown() override {
    EXPECT_EQ(Saved(), "song.wmv") << "nothing else stays behind";
    for (QProcess* process : {&stranger_, &display_}) {
      process->kill();
      process->waitForFinished();
    }
  }

  // A dialog of another program.
  void OpenStranger(const QString& title) {
    stranger_.start(kTool, {"stranger", title});
    while (windows.List().empty()) QCoro::waitFor(YieldToEventLoop());
  }

  // With what a compatibility layer would have written for the installed tool.
  int Capture(const QString& command) {
    home.Write("data/applications/wine/getasf.desktop",
               QString("[Desktop Entry]\nType=Application\nName=GetASFStream\nExec=%1\nPath=%2\n")
                   .arg(command, home.Path("tool"))
                   .toUtf8());
    return QCoro::waitFor(
        capture.Capture(context, "mms://m.test/song.wmv", home.Path("save/song.wmv")));
  }

  XdgFolders Folders() const {
    XdgFolders folders;
    folders.data = {home.Path("data")};
    return folders;
  }

  InstalledPrograms programs{Folders()};
  X11ToolWindows windows;
  ExternalStreamCapture capture{programs, windows, {.stall = 1500ms}};
  QProcess stranger_;

 private:
  QProcess display_;
};

TEST_F(StreamGetCaptureTest, AToolThatAsksIsAnsweredAndRecordsTheStream) {
  OpenStranger("確認");
  QStringList shown;
  QObject::connect(&board, &StatusBoard::Changed, &board,
                   [&] { shown.append(board.Status() + u' ' + board.Done()); });
  EXPECT_EQ(Capture(kTool + " record"), kComplete);
  EXPECT_EQ(home.Read("save/song.wmv"), "recorded");
  EXPECT_TRUE(shown.join(u'|').contains("45%")) << qPrintable(shown.join(u'|'));
  EXPECT_EQ(board.Done(), "0.45");
  EXPECT_EQ(stranger_.state(), QProcess::Running) << "the dialog of another program was answered";
  EXPECT_FALSE(capture.AskToolToClose());
}

TEST_F(StreamGetCaptureTest, AToolThatStandsStillIsToldYesAndEnded) {
  EXPECT_EQ(Capture(kTool + " stuck"), kDownloadFailed);
  EXPECT_EQ(home.Read("tool/answered"), "yes");
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
  EXPECT_EQ(windows.List().size(), 0U);
}

TEST_F(StreamGetCaptureTest, AFileThatTheToolHasAlreadyIsSkipped) {
  EXPECT_EQ(Capture(kTool + " exists"), kSkip);
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
  EXPECT_EQ(windows.List().size(), 0U);
}

TEST_F(StreamGetCaptureTest, AToolThatNeverShowsAWindowHasNoDialogsToAnswer) {
  OpenStranger("注意");
  QTimer::singleShot(0, &state, &RunState::RequestCancel);
  EXPECT_EQ(Capture(kTool + " hidden"), kCancelled);
  EXPECT_EQ(stranger_.state(), QProcess::Running) << "the dialog of another program was answered";
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
}

TEST_F(StreamGetCaptureTest, AWindowIsShownHiddenAndEnded) {
  QProcess tool;
  tool.start(kTool, {"exists"});
  std::vector<ToolWindow> list;
  while (list.empty() || !list.front().visible || list.front().processId == 0) {
    list = windows.List();
  }
  const quint32 id = list.front().id;
  EXPECT_TRUE(list.front().IsOfClass("StreamGet.exe"));
  EXPECT_EQ(list.front().processId, tool.processId());
  windows.Show(id, false);
  EXPECT_FALSE(windows.List().front().visible);
  windows.Show(id, true);
  EXPECT_TRUE(windows.List().front().visible);
  windows.EndProgram(id);
  EXPECT_TRUE(tool.waitForFinished());
}

TEST_F(StreamGetCaptureTest, AToolThatDoesNotComeUpIsFatalForItsRow) {
  EXPECT_EQ(Capture("/bin/false"), kFatal);
  EXPECT_TRUE(board.Status().contains(home.Path("tool")));
}

}  // namespace
}  // namespace zentorin::test
