// SPDX-License-Identifier: MIT
#include "download/stream/tool_lookup.h"

#include "tests/download/stream/capture_fixture.h"

namespace zentorin::test {
namespace {

class ToolLookupTest : public CaptureTest {
 protected:
  FoundTool Found(int setting) const { return lookup.Find(setting).value_or(FoundTool()); }

  // A VLC that is told to have a window listens already when it finds that it can have none; for
  // "slow" it goes on for a long time.
  void InstallVlc() {
    Program("bin/vlc", R"(#!/usr/bin/env python3
import os, socket, sys, time
words = dict(word.split('=', 1) for word in sys.argv[1:] if '=' in word)
slow = 'slow' in sys.argv[-1]
if words['--intf'] == 'qt':
    listener = socket.socket(socket.AF_UNIX)
    listener.bind(words['--rc-unix'])
    listener.listen()
    if not slow:
        time.sleep(0.1)
        sys.exit(1)
open(sys.argv[0] + '.id', 'w').write(str(os.getpid()))
open(words['--sout'].split('dst="')[1].split('"')[0], 'w').write('recorded')
if 'secret' not in sys.argv[-1]:
    sys.stderr.write('[0] main stream debug: creating access: ' + sys.argv[-1] + '\n')
    sys.stderr.flush()
if slow:
    time.sleep(60)
)");
    windows.windows = {ToolWindow()};
    options.vlcShow = true;
  }

  static ToolWindow Window(const char* className, qint64 processId = 0) {
    ToolWindow window;
    window.id = 7;
    window.className = className;
    window.processId = processId;
    window.visible = true;
    return window;
  }

  ToolLookup lookup{programs};
  FakeToolWindows windows;
  RowCode Record(StreamCapture& tool) { return Capture(tool, "mms://m.test/song.wmv", "song.wmv"); }

  ExternalStreamCapture hasty{
      programs, windows, messages, opener, {.stall = std::chrono::milliseconds(0)}};
  ExternalStreamCapture patient{programs, windows, messages, opener};
};

TEST_F(ToolLookupTest, VlcIsItsEntrysFileOrTheCommandOfThePath) {
  EXPECT_EQ(Found(ToolLookup::kVlc).path, "");
  EXPECT_EQ(lookup.Paths()[0], "");
  const QString console = Program("bin/cvlc");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, console);
  const QString command = Program("bin/vlc");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, command);
  Entry("VideoLAN VLC", Program("opt/flatpak") + " run vlc %U");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, command);
  const QString own = Program("opt/VLC");
  Entry("VLC media player", own + " --started-from-file %U");
  EXPECT_EQ(Found(ToolLookup::kVlc).words, QStringList(own));
  EXPECT_EQ(lookup.Paths()[0], own);
}

TEST_F(ToolLookupTest, StreamGetIsFoundThroughTheEntryThatStartsIt) {
  const QString file = home.Write("prefix/dosdevices/c:/Get ASF/StreamGet.exe", "");
  const QString layer = Program("bin/wine");
  Entry("GetASFStream", "env WINEPREFIX=" + home.Path("prefix") +
                            " wine \"C:\\\\\\\\Get ASF\\\\\\\\streamget.exe\"");
  EXPECT_EQ(Found(ToolLookup::kStreamGet).path, "") << "its starter is not there";
  Program("bin/env");
  EXPECT_EQ(Found(ToolLookup::kStreamGet).path, file);
  InstallStreamGet("wine start /unix x.lnk");
  EXPECT_EQ(Found(ToolLookup::kStreamGet).path, home.Path("tool/StreamGET.EXE"));
  EXPECT_EQ(Found(ToolLookup::kStreamGet).words.first(), layer);
  EXPECT_TRUE(lookup.FindAny().has_value());
}

TEST_F(ToolLookupTest, OnlyAWindowThatIsStillTheToolsOwnIsAskedToClose) {
  InstallStreamGet(Program("bin/wine"));
  const ToolWindow own = Window("streamget.exe");
  for (const auto& [later, isOwn] : {std::pair(own, true), std::pair(Window("editor"), false),
                                     std::pair(Window("streamget.exe", 6), false)}) {
    windows.looks = 0;
    windows.closed.clear();
    windows.windows = {own};  // one that nothing ends
    EXPECT_EQ(Record(hasty), RowCode::DownloadFailed);
    windows.windows = {later};
    EXPECT_EQ(hasty.AskToolToClose(), isOwn);
    EXPECT_FALSE(hasty.AskToolToClose()) << "once is enough";
    EXPECT_EQ(windows.closed, std::vector<quint32>(isOwn ? 1 : 0, own.id));
  }
}

TEST_F(ToolLookupTest, AVlcWhoseWindowFailsIsStartedAgainButOneThatTellsNothingIsNotTrusted) {
  InstallVlc();
  EXPECT_EQ(Record(patient), RowCode::Complete);
  EXPECT_EQ(home.Read("save/song.wmv"), "recorded");
  EXPECT_EQ(Capture(patient, "mms://m.test/secret", "b.wmv"), RowCode::DownloadFailed);
  EXPECT_TRUE(recorded.reason.contains("確認できません")) << recorded.reason.toStdString();
  EXPECT_EQ(Saved(), "song.wmv");
}

TEST_F(ToolLookupTest, AVlcWhoseWindowIsNotFoundIsWatchedAndItsWindowTakenLater) {
  InstallVlc();
  windows.lookTime = std::chrono::milliseconds(30);
  QObject::connect(&activity, &Activity::Changed, &activity, [&] {
    if (activity.Now().bytes == 0 || cancel.Token().Cancelled()) return;
    windows.windows = {Window("vlc", home.Read("bin/vlc.id").toLongLong())};
    patient.ShowToolWindow(true);
    EXPECT_EQ(windows.touched, std::vector<quint32>{7});
    cancel.Cancel();
  });
  Capture(patient, "mms://m.test/slow", "b.wmv");
  EXPECT_TRUE(cancel.Token().Cancelled()) << "nobody watched it";
}

TEST_F(ToolLookupTest, AMissingToolIsAskedForOnceARow) {
  messages.answers = {MessageBox::Answer::Yes};
  hasty.FindTool();
  for (int row = 0; row < 2; ++row) EXPECT_EQ(Record(hasty), RowCode::ToolNotInstalled);
  ASSERT_EQ(messages.Texts().filter("VLC未インストール|").size(), 2);
  EXPECT_EQ(messages.boxes[0].defaultAnswer, MessageBox::Answer::No);
  EXPECT_EQ(opener.opened.size(), 1);
}

}  // namespace
}  // namespace zentorin::test
