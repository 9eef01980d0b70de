// SPDX-License-Identifier: MIT
#include "download/stream/tool_lookup.h"

#include <QFile>

#include "download/result_code.h"
#include "download/stream/external_stream_capture.h"
#include "launch/installed_programs.h"
#include "tests/download/download_fixture.h"
#include "tests/download/stream/no_tool_windows.h"

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
    home.Write(
        QStringLiteral("data/applications/") + QString::fromUtf8(name) + QStringLiteral(".desktop"),
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

  XdgFolders Folders() const {
    XdgFolders folders;
    folders.data = {home.Path(QStringLiteral("data"))};
    folders.commands = {home.Path(QStringLiteral("bin"))};
    return folders;
  }

  InstalledPrograms programs{Folders()};
  ToolLookup lookup{programs};
  NoToolWindows windows;
  ExternalStreamCapture capture{programs, windows};
};

TEST_F(ToolLookupTest, VlcIsItsEntrysFileOrTheCommandOfThePath) {
  EXPECT_EQ(PathOf(ToolLookup::kVlc), QString());
  EXPECT_TRUE(lookup.Captions()[0].contains(QStringLiteral("インストールされていません")));
  const QString console = Program(QStringLiteral("bin/cvlc"));
  EXPECT_EQ(PathOf(ToolLookup::kVlc), console);
  const QString command = Program(QStringLiteral("bin/vlc"));
  EXPECT_EQ(PathOf(ToolLookup::kVlc), command);
  const QString sandbox = Program(QStringLiteral("opt/flatpak"));
  Entry("VideoLAN VLC", "Exec=" + sandbox.toUtf8() + " run vlc %U");
  EXPECT_EQ(PathOf(ToolLookup::kVlc), command);
  const QString own = Program(QStringLiteral("opt/VLC"));
  Entry("VLC media player", "Exec=" + own.toUtf8() + " --started-from-file %U");
  EXPECT_EQ(WordsOf(ToolLookup::kVlc), QStringList(own));
  EXPECT_TRUE(lookup.Captions()[0].contains(own));
}

TEST_F(ToolLookupTest, StreamGetIsFoundThroughTheEntryThatStartsIt) {
  const QString layer = Program(QStringLiteral("bin/wine"));
  const QString file = home.Write(QStringLiteral("prefix/dosdevices/c:/Get ASF/StreamGet.exe"), "");
  Entry("GetASFStream", "Exec=env WINEPREFIX=" + home.Path(QStringLiteral("prefix")).toUtf8() +
                            " wine \"C:\\\\\\\\Get ASF\\\\\\\\streamget.exe\"");
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), QString()) << "its starter is not there";
  Program(QStringLiteral("bin/env"));
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), file);
  Entry("GetASFStream", "Exec=wine start /unix x.lnk\nPath=" +
                            home.Path(QStringLiteral("prefix/dosdevices/c:/Get ASF")).toUtf8());
  EXPECT_EQ(PathOf(ToolLookup::kStreamGet), file);
  EXPECT_EQ(WordsOf(ToolLookup::kStreamGet).first(), layer);
  EXPECT_TRUE(lookup.FindAny().has_value());
}

TEST_F(ToolLookupTest, AMissingToolIsAskedForOnceARow) {
  messages.answers = {MessageBox::Answer::Yes};
  capture.FindTool();
  for (int row = 0; row < 2; ++row) {
    EXPECT_EQ(QCoro::waitFor(capture.Capture(context, QStringLiteral("http://s.test/a.wmv"),
                                             home.Path(QStringLiteral("a.wmv")))),
              kToolNotInstalled);
  }
  const QString question = QStringLiteral(
      "VLC未インストール|VLC media player　がインストールされていないようです。\r\n\r\n"
      "ASX(ストリーミング形式）のダウンロードには、VLC media player が必要です。\r\n"
      "VLC のダウンロードサイト（窓の杜）に接続しましょうか？");
  EXPECT_EQ(messages.Texts(), QStringList({question, question}));
  EXPECT_EQ(messages.boxes[0].defaultAnswer, MessageBox::Answer::No);
  EXPECT_EQ(opener.opened.size(), 1);
}

}  // namespace
}  // namespace zentorin::test
