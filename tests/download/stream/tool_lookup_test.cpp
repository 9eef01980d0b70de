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

  ToolLookup lookup{programs};
  FakeToolWindows windows;
  ExternalStreamCapture capture{programs, windows, {.stall = std::chrono::milliseconds(0)}};
  ExternalStreamCapture patient{programs, windows};
};

TEST_F(ToolLookupTest, VlcIsItsEntrysFileOrTheCommandOfThePath) {
  EXPECT_EQ(Found(ToolLookup::kVlc).path, "");
  EXPECT_TRUE(lookup.Captions()[0].contains("インストールされていません"));
  const QString console = Program("bin/cvlc");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, console);
  const QString command = Program("bin/vlc");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, command);
  Entry("VideoLAN VLC", Program("opt/flatpak") + " run vlc %U");
  EXPECT_EQ(Found(ToolLookup::kVlc).path, command);
  const QString own = Program("opt/VLC");
  Entry("VLC media player", own + " --started-from-file %U");
  EXPECT_EQ(Found(ToolLookup::kVlc).words, QStringList(own));
  EXPECT_TRUE(lookup.Captions()[0].contains(own));
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
  ToolWindow own;
  own.id = 7;
  own.className = "streamget.exe";
  own.visible = true;
  ToolWindow otherClass = own;
  otherClass.className = "editor";
  ToolWindow otherProcess = own;
  otherProcess.processId = 6;
  for (const auto& [later, closed] :
       {std::pair(own, std::vector<quint32>{7}), std::pair(otherClass, std::vector<quint32>()),
        std::pair(otherProcess, std::vector<quint32>())}) {
    windows.looks = 0;
    windows.closed.clear();
    windows.windows = {own};  // one that nothing ends
    EXPECT_EQ(Record(capture), kDownloadFailed);
    windows.windows = {later};
    EXPECT_EQ(capture.AskToolToClose(), !closed.empty());
    EXPECT_FALSE(capture.AskToolToClose()) << "once is enough";
    EXPECT_EQ(windows.closed, closed);
  }
}

TEST_F(ToolLookupTest, AVlcWhoseWindowFailsIsStartedAgainButOneThatTellsNothingIsNotTrusted) {
  InstallVlc();
  EXPECT_EQ(Record(patient), kComplete);
  EXPECT_EQ(home.Read("save/song.wmv"), "recorded");
  const QString path = home.Path("save/b.wmv");
  EXPECT_EQ(QCoro::waitFor(patient.Capture(context, "mms://m.test/secret", path)), kDownloadFailed);
  EXPECT_TRUE(board.Status().contains("確認できません")) << board.Status().toStdString();
  EXPECT_EQ(Saved(), "song.wmv");
}

TEST_F(ToolLookupTest, AVlcWhoseWindowIsNotFoundIsWatchedAndItsWindowTakenLater) {
  InstallVlc();
  windows.lookTime = std::chrono::milliseconds(30);
  QObject::connect(&board, &StatusBoard::ProgressChanged, &board, [&] {
    if (board.FileBytes() == 0 || state.CancelRequested()) return;
    ToolWindow own;
    own.id = 7;
    own.className = "vlc";
    own.visible = true;
    own.processId = home.Read("bin/vlc.id").toLongLong();
    windows.windows = {own};
    patient.ShowToolWindow(true);
    EXPECT_EQ(windows.touched, std::vector<quint32>{7});
    state.RequestCancel();
  });
  QCoro::waitFor(patient.Capture(context, "mms://m.test/slow", home.Path("save/b.wmv")));
  EXPECT_TRUE(state.CancelRequested()) << "nobody watched it";
}

TEST_F(ToolLookupTest, AMissingToolIsAskedForOnceARow) {
  messages.answers = {MessageBox::Answer::Yes};
  capture.FindTool();
  for (int row = 0; row < 2; ++row) EXPECT_EQ(Record(capture), kToolNotInstalled);
  const QString question =
      "VLC未インストール|VLC media player　がインストールされていないようです。\r\n\r\n"
      "ASX(ストリーミング形式）のダウンロードには、VLC media player が必要です。\r\n"
      "VLC のダウンロードサイト（窓の杜）に接続しましょうか？";
  EXPECT_EQ(messages.Texts(), QStringList(2, question));
  EXPECT_EQ(messages.boxes[0].defaultAnswer, MessageBox::Answer::No);
  EXPECT_EQ(opener.opened.size(), 1);
}

}  // namespace
}  // namespace zentorin::test
