// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

#include "base/wait.h"
#include "download/stream/x11_tool_windows.h"
#include "tests/download/stream/capture_fixture.h"

namespace zentorin::test {
namespace {

const QString kTool = ZENTORIN_FAKE_STREAM_GET;

// Moves a window to where no list of windows looks, as long as the connection that it answers is
// open.
std::shared_ptr<xcb_connection_t> PutDeepInside(xcb_window_t window) {
  const std::shared_ptr<xcb_connection_t> owner(xcb_connect(nullptr, nullptr), xcb_disconnect);
  xcb_connection_t* connection = owner.get();
  xcb_window_t parent = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  for (int depth = 0; depth < 10; ++depth) {
    const xcb_window_t frame = xcb_generate_id(connection);
    xcb_create_window(connection, 0, frame, parent, 0, 0, 9, 9, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, 0,
                      0, nullptr);
    parent = frame;
  }
  free(
      xcb_request_check(connection, xcb_reparent_window_checked(connection, window, parent, 0, 0)));
  return owner;
}

// The program against a tool that behaves like StreamGet, on a display of its own.
class StreamGetCaptureTest : public CaptureTest {
 protected:
  void SetUp() override {
    const QString program = QStandardPaths::findExecutable("Xvfb");
    if (program.isEmpty()) GTEST_SKIP() << "Xvfb is not installed";
    display.start(program, {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(display.waitForReadyRead());
    qputenv("DISPLAY", ":" + display.readLine().trimmed());
  }

  void TearDown() override {
    EXPECT_EQ(Saved(), "song.wmv") << "nothing else stays behind";
    for (QProcess* process : {&other, &display}) {
      process->kill();
      process->waitForFinished();
    }
  }

  // Starts another program of that kind and waits for its window.
  ToolWindow Open(const QStringList& arguments) {
    other.start(kTool, arguments);
    std::vector<ToolWindow> list;
    while (list.empty() || !list.front().visible || list.front().processId == 0) {
      QCoro::waitFor(YieldToEventLoop());
      list = windows.List();
    }
    return list.front();
  }

  RowCode Record(const QString& command) {
    InstallStreamGet(command);
    return Capture(tool, "mms://m.test/song.wmv", "song.wmv");
  }

  QProcess display;
  QProcess other;
  X11ToolWindows windows;
  ExternalStreamCapture tool{
      programs, windows, messages, opener, {.stall = std::chrono::seconds(4)}};
};

TEST_F(StreamGetCaptureTest, AToolThatAsksIsAnsweredAndRecordsTheStream) {
  Open({"stranger", "確認"});
  QStringList shown;
  double share = 0;
  QObject::connect(&activity, &Activity::Changed, [&] {
    shown.append(activity.Now().message.text);
    share = qMax(share, activity.Now().recorded.value_or(0));
  });
  EXPECT_EQ(Record(kTool + " record"), RowCode::Complete);
  EXPECT_EQ(home.Read("save/song.wmv"), "recorded");
  EXPECT_TRUE(shown.join(u'|').contains("45%")) << qPrintable(shown.join(u'|'));
  EXPECT_EQ(share, 0.45);
  EXPECT_EQ(other.state(), QProcess::Running) << "the dialog of another program was answered";
  EXPECT_FALSE(tool.AskToolToClose());
}

TEST_F(StreamGetCaptureTest, AToolThatRecordsNothingIsEndedAndCostsNoEarlierRecording) {
  using Case = std::pair<QString, RowCode>;
  for (const auto& [command, code] :
       {Case(kTool + " stuck", RowCode::DownloadFailed), Case(kTool + " exists", RowCode::Skip),
        Case("/bin/false", RowCode::Fatal)}) {
    EXPECT_EQ(Record(command), code);
    EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
    EXPECT_EQ(windows.List().size(), 0U);
  }
  EXPECT_EQ(home.Read("tool/answered"), "yes") << "the one that stood still";
  EXPECT_TRUE(recorded.reason.contains(home.Path("tool")));
}

TEST_F(StreamGetCaptureTest, AToolThatNeverShowsAWindowHasNoDialogsToAnswer) {
  Open({"stranger", "注意"});
  QTimer::singleShot(0, [this] { cancel.Cancel(); });
  EXPECT_EQ(Record(kTool + " hidden"), RowCode::Cancelled);
  EXPECT_EQ(other.state(), QProcess::Running) << "the dialog of another program was answered";
  EXPECT_EQ(home.Read("save/song.wmv"), "an old one");
}

TEST_F(StreamGetCaptureTest, AWindowIsShownHiddenAndEnded) {
  const ToolWindow window = Open({"exists"});
  EXPECT_TRUE(window.IsOfClass("StreamGet.exe"));
  EXPECT_EQ(window.processId, other.processId());
  windows.Show(window.id, false);
  EXPECT_FALSE(windows.List().front().visible);
  windows.Show(window.id, true);
  EXPECT_TRUE(windows.List().front().visible);
  const auto inside = PutDeepInside(window.id);
  EXPECT_TRUE(windows.Find(window)) << "wherever a window manager puts it";
  windows.EndProgram(window.id);
  EXPECT_TRUE(other.waitForFinished());
  EXPECT_FALSE(windows.Find(window));
}

}  // namespace
}  // namespace zentorin::test
