// SPDX-License-Identifier: MIT
#include "download/stream/tool_lookup.h"

#include <QFile>

#include "download/result_code.h"
#include "download/stream/external_stream_capture.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"
#include "tests/download/stream/fake_tool_windows.h"

namespace zentorin::test {
namespace {

// A machine whose programs and menu entries lie in a folder of the test.
class ToolLookupTest : public DownloadTest {
 protected:
  QString Program(const QString& name) const {
    const QString path = home.Write(name, "#!/bin/sh\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
  }
  void Entry(const QByteArray& name, const QByteArray& lines) const {
    home.Write("data/applications/" + QString(name) + ".desktop",
               "[Desktop Entry]\nType=Application\nName=" + name + '\n' + lines + '\n');
  }
  QString PathOf(int setting) const {
    const auto tool = lookup.Find(setting);
    return tool ? tool->path : QString();
  }

  QStringList WordsOf(int setting) const {
    const auto tool = lookup.Find(setting);
    return tool ? tool->words : QStringList();
  }

  void InstallStreamGet() const {
    Program("bin/wine");
    home.Write("tool/StreamGet.exe", "");
    Entry("GetASFStream", "Exec=wine start /unix x.lnk\nPath=" + home.Path("tool").toUtf8());
  }

  int Capture() {
    return QCoro::waitFor(capture.Capture(context, "http://s.test/a.wmv", home.Path("a.wmv")));
  }

  XdgFolders Folders() const {
    XdgFolders folders;
    folders.data = {home.Path("data")};
    folders.commands = {home.Path("bin")};
    return folders;
  }

  InstalledPrograms programs{Folders()};
  ToolLookup lookup{programs};
  FakeToolWindows windows;
  ExternalStreamCapture capture{programs, windows, {.stall = std::chrono::milliseconds(0)}};
};

TEST_F(ToolLookupTest, VlcIsItsEntrysFileOrTheCommandOfThePath) {
  EXPECT_EQ(PathOf(ToolLookup::kVlc), QString());
  EXPECT_TRUE(lookup.Captions()[0].contains("インストールされていません"));
  const QString console = Program("bin/cvlc");
  EXPECT_EQ(PathOf(ToolLookup::kVlc), console);
  const QString command = Program("bin/vlc");
  EXPECT_EQ(PathOf(ToolLookup::kVlc), command);
  const QString sandbox = Program("opt/flatpak");
  Entry("VideoLAN VLC", "Exec=" + sandbox.toUtf8() + " run vlc %U");
  EXPECT_EQ(PathOf(ToolLookup::kVlc), command);
  const QString own = Program("opt/VLC");
  Entry("VLC media player", "Exec=" + own.toUtf8() + " --started-from-file %U");
  EXPECT_EQ(WordsOf(ToolLookup::kVlc), QStringList(own));
  EXPECT_TRUE(lookup.Captions()[0].contains(own));
}

TEST_F(ToolLookupTest, StreamGetIsFoundThroughTheEntryThatStartsIt) {
  InstallStreamGet();
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), home.Path("tool/StreamGet.exe"));
  EXPECT_EQ(WordsOf(ToolLookup::kStreamGet).first(), home.Path("bin/wine"));
  EXPECT_TRUE(lookup.FindAny().has_value());
  const QString file = home.Write("prefix/dosdevices/c:/Get ASF/StreamGet.exe", "");
  Entry("GetASFStream", "Exec=env WINEPREFIX=" + home.Path("prefix").toUtf8() +
                            " wine \"C:\\\\\\\\Get ASF\\\\\\\\streamget.exe\"");
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), QString()) << "its starter is not there";
  Program("bin/env");
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), file);
}

TEST_F(ToolLookupTest, OnlyVlcConvertsAndItStandsInForTheOtherTool) {
  options.streamingTool = ToolLookup::kStreamGet;
  Program("bin/vlc");
  capture.FindTool();
  EXPECT_TRUE(capture.ConvertsSound(context));
  InstallStreamGet();
  EXPECT_FALSE(capture.ConvertsSound(context));
  options.streamingTool = ToolLookup::kVlc;
  EXPECT_TRUE(capture.ConvertsSound(context));
}

TEST_F(ToolLookupTest, OnlyAWindowThatIsStillTheToolsOwnIsAskedToClose) {
  const ToolWindow own{.id = 7,
                       .instance = "streamget.exe",
                       .className = "streamget.exe",
                       .title = "",
                       .processId = 5,
                       .visible = true};
  ToolWindow otherClass = own;
  otherClass.className = "editor";
  ToolWindow otherProcess = own;
  otherProcess.processId = 6;
  options.streamingTool = ToolLookup::kStreamGet;
  InstallStreamGet();
  windows.available = true;
  for (const auto& [later, same] :
       {std::pair(own, true), std::pair(otherClass, false), std::pair(otherProcess, false)}) {
    windows.closed.clear();
    windows.emptyLooks = 1;
    windows.windows = {own};  // one that nothing ends
    EXPECT_EQ(Capture(), kDownloadFailed);
    windows.windows = {later};
    EXPECT_EQ(capture.AskToolToClose(), same);
    EXPECT_FALSE(capture.AskToolToClose()) << "once is enough";
    EXPECT_EQ(windows.closed, std::vector<quint32>(same ? 1 : 0, own.id));
  }
}

TEST_F(ToolLookupTest, AMissingToolIsAskedForOnceARow) {
  messages.answers = {MessageBox::Answer::Yes};
  capture.FindTool();
  for (int row = 0; row < 2; ++row) EXPECT_EQ(Capture(), kToolNotInstalled);
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
