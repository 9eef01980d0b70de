// SPDX-License-Identifier: MIT
#include "download/download_run.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "base/ansi_text.h"
#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;

using DownloadRunTest = test::DownloadTest;

TEST_F(DownloadRunTest, EveryCodeHasItsMarkAndItsLogText) {
  struct Case {
    int code;
    const char* mark;
    const char* log;  // the address and the line that names the folder have one letter each here
    bool errorFlag;
    const char* status;
  };
  const Case cases[] = {
      {-5, "x", "  x Error - VLC not installed -5    UF", true, "  x Error - VLC not installed "},
      {-4, "x", "  x Error - failure to create folder -4    UF", false, "ダウンロード中"},
      {-3, "x", "  x Error - imperfect -3\r\n    U\r\n\r\n", true, "  x Error - imperfect "},
      {-1, "x", "  x Error - fatal-1\r\n    U\r\n\r\n", true, "  x Error - fatal"},
      {0, "o", "  o Complete\r\n    U\r\n\r\n", false, "ダウンロード完了"},
      {1, " ", "  - Cancel    U", false, "Cancel"},
      {2, "-", "  - Skip - already existed\r\n    U\r\n\r\n", false, "alreay exist"},
      {3, "?", "  ? Skip - None\r\n    U\r\n\r\n", false, "ダウンロード中"},
      {4, "-", "  - Skip \r\n    U\r\n\r\n\r\n", false, "ダウンロード中"},
      {61, "-", "  x out of disk space \r\n    U\r\n", false, "ダウンロード中"},
      {57, "x", "  x Error 57\r\n    U\r\n\r\n", true, "ダウンロード中"},
  };
  for (const Case& c : cases) {
    capture.result = c.code;
    state.SetErrorFlag(false);
    const QByteArray expected = QByteArray(c.log)
                                    .replace("F", "\r\n" + QByteArray(38, ' ') + "save\\\r\n\r\n")
                                    .replace("U", "http://s.test/a.php");
    EXPECT_EQ(MarkOf("http://s.test/a.php"), c.mark) << c.code;
    EXPECT_EQ(LogText(), "< daily >\r\n\r\n" + expected) << c.code;
    EXPECT_EQ(state.ErrorFlag(), c.errorFlag) << c.code;
    EXPECT_EQ(board.Status(), c.status) << c.code;
    const bool fatal = c.code == -4 || c.code == 61;
    EXPECT_EQ(state.CancelRequested(), fatal) << c.code;
    EXPECT_EQ(lastRunFailed, c.errorFlag || fatal) << c.code;
    EXPECT_TRUE(board.SiteEnabled() && !board.ProgressShown()) << c.code;
  }
}

TEST_F(DownloadRunTest, ARunThatEndsWithAnUnrecordedStreamLogsNothing) {
  capture.result = -2;
  EXPECT_EQ(MarkOf("http://s.test/a.php"), "x");
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(board.Status(), "  x Error - failure download ");
}

TEST_F(DownloadRunTest, RowsAreFetchedMarkedAndDeselectedInOrder) {
  options.openFolder = true;
  server.Route("/a.mp3", Answer::Text("A"));
  server.Route("/short", Answer::Text("xyz").Ends(Answer::Ending::CutOff, 1));
  server.Route("/old", Answer::Text("new"));
  home.Write("save/old", "old");
  job.Edit(TargetUrlItem::Root, {});
  for (const char* address :
       {"http://s.test/a.mp3", "http://s.test/none", "http://s.test/short", "http://s.test/old",
        "noslash", "http://s.test/unselected", "http://s.test/dir/"}) {
    Add(address);
  }
  files.SetSelected(5, false);
  QStringList counters;
  QObject::connect(&server, &test::LoopbackServer::RequestReceived,
                   [&] { counters.append(board.Counter()); });
  RunRows();
  EXPECT_EQ(Marks(), "o|?|x|-|||x");
  EXPECT_EQ(Saved(), "a.mp3|old") << "what broke off is deleted";
  EXPECT_EQ(home.Read("save/old"), "old");
  EXPECT_EQ(files.SelectedCount(), 0);
  EXPECT_EQ(files.CurrentRow(), 6);
  EXPECT_EQ(opener.opened, QStringList("folder:" + home.Path("save")));
  EXPECT_TRUE(counters.contains("1/6"));
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n"
            "  o Complete\r\n    http://s.test/a.mp3\r\n\r\n"
            "  ? Skip - None\r\n    http://s.test/none\r\n\r\n"
            "  x Error 57\r\n    http://s.test/short\r\n\r\n"
            "  - Skip - already existed\r\n    http://s.test/old\r\n\r\n"
            "  x Error 52\r\n    http://s.test/dir/\r\n\r\n");

  EXPECT_EQ(server.Hits("/old"), 0) << "nothing is asked ahead for what is there";
  EXPECT_EQ(server.Hits("/none"), 2) << "asked ahead or not, a file is asked once";

  job.EditFlag(TargetUrlItem::OverWrite, true);
  EXPECT_EQ(MarkOf("http://s.test/old"), "o");
  EXPECT_EQ(home.Read("save/old"), "new");
}

TEST_F(DownloadRunTest, ACancelDeletesThePartialFileAndEndsTheRun) {
  server.Route("/a", Answer::Generated(2'000'000).Ends(Answer::Ending::Stall, 500'000));
  Add("http://s.test/a");
  Add("http://s.test/b");
  QObject::connect(&board, &StatusBoard::ProgressChanged, [this] {
    if (board.FileBytes() > 0) state.RequestCancel();
  });
  RunRows();
  EXPECT_EQ(Saved(), "");
  EXPECT_EQ(Marks(), " |");
  EXPECT_EQ(LogText(), "< daily >\r\n\r\n  - Cancel    http://s.test/a");
  EXPECT_EQ(files.SelectedCount(), 2);
}

TEST_F(DownloadRunTest, NamesFromOutsideStayInTheSaveFolder) {
  server.SetFallback([](const test::ReceivedRequest&) { return Answer::Text("x"); });
  home.Write("save/keep", "k");
  job.EditFlag(TargetUrlItem::TreeFolder, true);
  const QByteArray longName = QByteArray(300, 'n') + ".mp3";
  for (const char* tail : {"../../../up", "%2e%2e/%2e%2e/enc", "..\\..\\back", "nul%00name", "CON",
                           longName.constData(), "%2e%2e%2fslash"}) {
    Add(QString("http://site.test/dir/") + tail);
    Add(QString("http://o.test/") + tail);
  }
  RunRows();
  EXPECT_EQ(Marks(), QString("o|").repeated(14).chopped(1));
  EXPECT_EQ(Saved().count('|'), 14) << Saved().toStdString();
  EXPECT_EQ(QDir(home.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2)
      << "save and log.txt";
}

TEST_F(DownloadRunTest, LinksBelowTheSaveFolderAreNotFollowedOutOfIt) {
  server.SetFallback([](const test::ReceivedRequest&) { return Answer::Text("x"); });
  const test::TempDir outside;
  const QString victim = outside.Write("victim", "safe");
  home.Write("save/keep", "k");
  QFile::link(victim, home.Path("save/link"));
  QFile::link(outside.Path(), home.Path("save/way"));
  job.EditFlag(TargetUrlItem::OverWrite, true);
  home.Write("save/folder.wmv/keep", "k");
  QFile::link(home.Path("save/keep"), home.Path("save/link.php"));
  for (const char* name : {"link", "link.php", "folder.wmv"}) {
    EXPECT_EQ(MarkOf(QString("http://site.test/dir/") + name), "x") << name;
  }
  EXPECT_EQ(capture.captured, QStringList()) << "only a regular file is recorded over";
  job.EditFlag(TargetUrlItem::TreeFolder, true);
  EXPECT_EQ(MarkOf("http://site.test/dir/way/victim"), "x");
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n  x Error 75\r\n    http://site.test/dir/way/victim\r\n\r\n");
  EXPECT_EQ(outside.Read("victim"), "safe");
  EXPECT_TRUE(QFileInfo(home.Path("save/link")).isSymLink()) << "nothing is deleted";
}

TEST_F(DownloadRunTest, TheDatePrefixIsTakenFromTheRowOrAskedFor) {
  options.addDate = true;
  options.addDateFormat = "yyyy/mm/dd_";
  server.Route("/a", Answer::Text("x").With("Last-Modified", "Wed, 01 May 2024 20:00:00 GMT"));
  server.Route("/b", Answer::Text("x"));
  EXPECT_EQ(MarkOf("http://s.test/a", "-"), "o");
  EXPECT_EQ(files.Row(0)[FileListRow::Date], "2024/05/02 05:00:00");
  MarkOf("http://s.test/a", "2020/01/02 03:04:05");
  MarkOf("http://s.test/b");
  EXPECT_EQ(Saved(), "2020_01_02_a|2024_05_02_a|b");
}

TEST_F(DownloadRunTest, TheFirstStreamOfAnAsxFileIsTakenWhateverItsForm) {
  struct Case {
    QByteArray asx;
    const char* type;
    const char* file;  // null when there is none
  };
  const char* plain = "video/x-ms-asf";
  const QByteArray title = "<title>\x93\xfa\x96\x7b\x8c\xea</title>";
  const Case cases[] = {
      {R"(<asx version="3.0"><entry><ref href="mms://m.test/1.wmv"/></entry>)", plain, "1.wmv"},
      {R"(<ASX><ENTRY><REF HREF  =  "MMS://m.test/x/2.WMV"/></ENTRY></ASX>)", plain, "2.WMV"},
      {title + "<ref href=\"mms://m.test/\x93\xfa.wmv\"/>\r\n<ref href=\"mms://m.test/x.wmv\"/>",
       "text/html; charset=Shift_JIS", "日.wmv"},
      {R"(<ref href="http://m.test/h.wmv"/>)" + title + R"(<ref href="mms://m.test/3.WMA"/>)",
       "application/octet-stream", "3.mp3"},
      {R"(<asx><ref href="http://m.test/h.wmv"/></asx>)", plain, nullptr},
      {"", plain, nullptr},
  };
  for (const Case& c : cases) {
    capture.captured.clear();
    server.Route("/a.asx", Answer::Text(c.asx, c.type));
    EXPECT_EQ(MarkOf("http://s.test/a.asx"), c.file != nullptr ? "o" : "?");
    EXPECT_EQ(capture.captured.join('|'),
              c.file != nullptr ? "http://s.test/a.asx -> " + home.Path("save/") + c.file : "");
  }
  EXPECT_EQ(board.Status(), "ＵＲＬ無効");
  EXPECT_EQ(board.StatusColour(), StatusBoard::kRed);
  EXPECT_TRUE(LogText().contains("? Skip - None"));
}

TEST_F(DownloadRunTest, TheReasonOfAFailedRecordingIsLoggedBelowItsAddress) {
  capture.result = -1;
  capture.during = [this](const QString&) { board.SetStatus("応答がない", StatusBoard::kRed); };
  MarkOf("http://s.test/a.wmv");
  EXPECT_EQ(LogText(), EncodeAnsi(u"< daily >\r\n\r\n  x Error - fatal-1\r\n    "
                                  "http://s.test/a.wmv\r\n    応答がない\r\n\r\n")
                           .bytes);
}

TEST_F(DownloadRunTest, AStreamGoesWithACancel) {
  capture.result = -3;
  capture.during = [this](const QString& path) {
    home.Write("save/" + QFileInfo(path).fileName(), "x");
    state.RequestCancel();
  };
  MarkOf("http://s.test/cut.wmv");
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n  x Cancel - imperfect -3\r\n    http://s.test/cut.wmv\r\n\r\n");
  EXPECT_EQ(Saved(), "");
}

TEST_F(DownloadRunTest, FatalErrorsAndAMissingSelectionAreTold) {
  RunRows();
  Add("http://s.test/a");
  files.DeselectAll();
  RunRows();
  EXPECT_EQ(LogText(), "") << "an empty entry";
  home.Write("save", "a file");
  MarkOf("http://s.test/a");
  QFile::remove(home.Path("save"));
  capture.result = 61;
  MarkOf("http://s.test/a.php");
  ASSERT_EQ(messages.boxes.size(), 4U);
  EXPECT_TRUE(messages.Texts()[0].startsWith(
      "未選択|ファイルリスト作成されていません！\r\n\r\n[URLリスト]項目を選択⇒"));
  EXPECT_EQ(messages.Texts()[1],
            "未選択|ファイルリストが選択されていません！\r\n\r\n"
            "ファイルを選択後に再度実行して下さい。");
  EXPECT_TRUE(messages.Texts()[2].startsWith("続行不可エラー発生|75 "));
  EXPECT_TRUE(messages.Texts()[2].endsWith(home.Path("save")));
  EXPECT_TRUE(QRegularExpression("^続行不可エラー発生\\|空き容量不足です。\r\n\r\n"
                                 "Free Space = [0-9]{1,3}(,[0-9]{3})* kbyte$")
                  .match(messages.Texts()[3])
                  .hasMatch())
      << messages.Texts()[3].toStdString();
}

TEST_F(DownloadRunTest, RowsThatTheUserSortsOrDeletesMeanwhileAreMetOnce) {
  server.SetFallback([this](const test::ReceivedRequest& request) {
    // While "b" is under way, "a" and "c" change places and "d" is deleted.
    if (request.target == "/b" && server.Hits("/b") == 1) {
      files.Reorder({2, 1, 0, 3});
      for (int row = 0; row < 3; ++row) files.SetSelected(row, false);
      files.RemoveSelected();
      files.SetSelected(0, true);
      files.SetSelected(1, true);
    }
    return Answer::Text("x");
  });
  for (const char* name : {"a", "b", "c", "d"}) Add(QString("http://s.test/") + name);
  RunRows();
  EXPECT_EQ(Saved(), "a|b|c");
  EXPECT_EQ(Marks(), "o|o|o");
}

}  // namespace
}  // namespace zentorin
