// SPDX-License-Identifier: MIT
#include "download/download_run.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;

class DownloadRunTest : public test::DownloadTest {
 protected:
  // Names of the files below the save folder, with their folders.
  QStringList Saved() const {
    QStringList names;
    QDirIterator it(home.Path(QStringLiteral("save")), QDir::Files | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) names.append(it.next().mid(home.Path(QStringLiteral("save/")).size()));
    names.sort();
    return names;
  }
};

TEST_F(DownloadRunTest, EveryCodeHasItsMarkAndItsLogText) {
  struct Case {
    int code;
    const char* mark;
    const char* log;
    bool errorFlag;
    const char* status;
  };
  const Case cases[] = {
      {-5, "x",
       "  x Error - VLC not installed -5    http://s.test/a.php\r\n"
       "                                      save\\\r\n\r\n",
       true, "  x Error - VLC not installed "},
      {-4, "x",
       "  x Error - failure to create folder -4    http://s.test/a.php\r\n"
       "                                      save\\\r\n\r\n",
       false, "ダウンロード中"},
      {-3, "x", "  x Error - imperfect -3\r\n    http://s.test/a.php\r\n\r\n", true,
       "  x Error - imperfect "},
      {-1, "x", "  x Error - fatal-1\r\n    http://s.test/a.php\r\n\r\n", true,
       "  x Error - fatal"},
      {0, "o", "  o Complete\r\n    http://s.test/a.php\r\n\r\n", false, "ダウンロード完了"},
      {1, " ", "  - Cancel    http://s.test/a.php", false, "Cancel"},
      {2, "-", "  - Skip - already existed\r\n    http://s.test/a.php\r\n\r\n", false,
       "alreay exist"},
      {3, "?", "  ? Skip - None\r\n    http://s.test/a.php\r\n\r\n", false, "ダウンロード中"},
      {4, "-", "  - Skip \r\n    http://s.test/a.php\r\n\r\n\r\n", false, "ダウンロード中"},
      {61, "-", "  x out of disk space \r\n    http://s.test/a.php\r\n", false, "ダウンロード中"},
      {57, "x", "  x Error 57\r\n    http://s.test/a.php\r\n\r\n", true, "ダウンロード中"},
  };
  for (const Case& c : cases) {
    capture.result = c.code;
    state.SetErrorFlag(false);
    EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/a.php")), QString::fromUtf8(c.mark)) << c.code;
    EXPECT_EQ(LogText(), QByteArray("< daily >\r\n\r\n") + c.log) << c.code;
    EXPECT_EQ(state.ErrorFlag(), c.errorFlag) << c.code;
    EXPECT_EQ(board.Status(), QString::fromUtf8(c.status)) << c.code;
    const bool fatal = c.code == -4 || c.code == 61;
    EXPECT_EQ(state.CancelRequested(), fatal) << c.code;
    EXPECT_EQ(lastRunFailed, c.errorFlag || fatal) << c.code;
    EXPECT_TRUE(board.SiteEnabled() && !board.ProgressShown()) << c.code;
  }
}

TEST_F(DownloadRunTest, ARunThatEndsWithAnUnrecordedStreamLogsNothing) {
  capture.result = -2;
  EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/a.php")), QStringLiteral("x"));
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(board.Status(), QStringLiteral("  x Error - failure download "));
}

TEST_F(DownloadRunTest, RowsAreFetchedMarkedAndDeselectedInOrder) {
  options.openFolder = true;
  server.Route(QStringLiteral("/a.mp3"), Answer::Text("A"));
  server.Route(QStringLiteral("/short"), Answer::Text("xyz").Ends(Answer::Ending::CutOff, 1));
  server.Route(QStringLiteral("/old"), Answer::Text("new"));
  home.Write(QStringLiteral("save/old"), "old");
  job.Edit(TargetUrlItem::Root, {});
  for (const char* address :
       {"http://s.test/a.mp3", "http://s.test/none", "http://s.test/short", "http://s.test/old",
        "noslash", "http://s.test/unselected", "http://s.test/dir/"}) {
    Add(QString::fromUtf8(address));
  }
  files.SetSelected(5, false);
  QStringList counters;
  QObject::connect(&board, &StatusBoard::ProgressChanged,
                   [&] { counters.append(board.Counter()); });
  RunRows();
  QStringList marks;
  for (int row = 0; row < files.Count(); ++row) marks.append(files.Row(row)[FileListRow::Mark]);
  EXPECT_EQ(marks.join(QLatin1Char('|')), QStringLiteral("o|?|x|-|||x"));
  EXPECT_EQ(Saved(), QStringList({QStringLiteral("a.mp3"), QStringLiteral("old")}))
      << "what broke off is deleted";
  EXPECT_EQ(home.Read(QStringLiteral("save/old")), "old");
  EXPECT_EQ(files.SelectedCount(), 0);
  EXPECT_EQ(files.CurrentRow(), 6);
  EXPECT_EQ(opener.opened,
            QStringList(QStringLiteral("folder:") + home.Path(QStringLiteral("save"))));
  EXPECT_TRUE(counters.contains(QStringLiteral("1/6")));
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n"
            "  o Complete\r\n    http://s.test/a.mp3\r\n\r\n"
            "  ? Skip - None\r\n    http://s.test/none\r\n\r\n"
            "  x Error 57\r\n    http://s.test/short\r\n\r\n"
            "  - Skip - already existed\r\n    http://s.test/old\r\n\r\n"
            "  x Error 52\r\n    http://s.test/dir/\r\n\r\n");

  EXPECT_EQ(server.Hits(QStringLiteral("/old")), 0) << "nothing is asked ahead for what is there";
  EXPECT_EQ(server.Hits(QStringLiteral("/none")), 2) << "asked ahead or not, a file is asked once";

  job.EditFlag(TargetUrlItem::OverWrite, true);
  EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/old")), QStringLiteral("o"));
  EXPECT_EQ(home.Read(QStringLiteral("save/old")), "new");
}

TEST_F(DownloadRunTest, ACancelDeletesThePartialFileAndEndsTheRun) {
  server.Route(QStringLiteral("/a"),
               Answer::Generated(2'000'000).Ends(Answer::Ending::Stall, 500'000));
  Add(QStringLiteral("http://s.test/a"));
  Add(QStringLiteral("http://s.test/b"));
  QObject::connect(&board, &StatusBoard::ProgressChanged, [this] {
    if (board.FileBytes() > 0) state.RequestCancel();
  });
  RunRows();
  EXPECT_EQ(Saved(), QStringList());
  EXPECT_EQ(files.Row(0)[FileListRow::Mark] + files.Row(1)[FileListRow::Mark], QStringLiteral(" "));
  EXPECT_EQ(LogText(), "< daily >\r\n\r\n  - Cancel    http://s.test/a");
  EXPECT_EQ(files.SelectedCount(), 2);
}

TEST_F(DownloadRunTest, NamesFromOutsideStayInTheSaveFolder) {
  server.SetFallback([](const test::ReceivedRequest&) { return Answer::Text("x"); });
  home.Write(QStringLiteral("save/keep"), "k");
  job.EditFlag(TargetUrlItem::TreeFolder, true);
  const QString longName(300, QLatin1Char('n'));
  for (const QString& tail :
       {QStringLiteral("../../../up"), QStringLiteral("%2e%2e/%2e%2e/enc"),
        QStringLiteral("..\\..\\back"), QStringLiteral("nul%00name"), QStringLiteral("CON"),
        longName + QStringLiteral(".mp3"), QStringLiteral("%2e%2e%2fslash")}) {
    Add(QStringLiteral("http://site.test/dir/") + tail);
    Add(QStringLiteral("http://o.test/") + tail);
  }
  RunRows();
  for (int row = 0; row < files.Count(); ++row) {
    EXPECT_EQ(files.Row(row)[FileListRow::Mark], QStringLiteral("o"))
        << files.Row(row)[FileListRow::Address].toStdString();
  }
  EXPECT_EQ(Saved().size(), 15) << Saved().join(QLatin1Char('\n')).toStdString();
  EXPECT_EQ(QDir(home.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2)
      << "save and log.txt";
}

TEST_F(DownloadRunTest, LinksBelowTheSaveFolderAreNotFollowedOutOfIt) {
  server.SetFallback([](const test::ReceivedRequest&) { return Answer::Text("x"); });
  const test::TempDir outside;
  const QString victim = outside.Write(QStringLiteral("victim"), "safe");
  home.Write(QStringLiteral("save/keep"), "k");
  QFile::link(victim, home.Path(QStringLiteral("save/link")));
  QFile::link(outside.Path(), home.Path(QStringLiteral("save/way")));
  job.EditFlag(TargetUrlItem::OverWrite, true);
  EXPECT_EQ(MarkOf(QStringLiteral("http://site.test/dir/link")), QStringLiteral("x"));
  job.EditFlag(TargetUrlItem::TreeFolder, true);
  EXPECT_EQ(MarkOf(QStringLiteral("http://site.test/dir/way/victim")), QStringLiteral("x"));
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n  x Error 75\r\n    http://site.test/dir/way/victim\r\n\r\n");
  EXPECT_EQ(outside.Read(QStringLiteral("victim")), "safe");
  EXPECT_TRUE(QFileInfo(home.Path(QStringLiteral("save/link"))).isSymLink())
      << "nothing is deleted";
}

TEST_F(DownloadRunTest, TheDatePrefixIsTakenFromTheRowOrAskedFor) {
  options.addDate = true;
  options.addDateFormat = QStringLiteral("yyyy/mm/dd_");
  server.Route(QStringLiteral("/a"),
               Answer::Text("x").With("Last-Modified", "Wed, 01 May 2024 20:00:00 GMT"));
  server.Route(QStringLiteral("/b"), Answer::Text("x"));
  EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/a"), QStringLiteral("-")), QStringLiteral("o"));
  EXPECT_EQ(files.Row(0)[FileListRow::Date], QStringLiteral("2024/05/02 05:00:00"));
  MarkOf(QStringLiteral("http://s.test/a"), QStringLiteral("2020/01/02 03:04:05"));
  MarkOf(QStringLiteral("http://s.test/b"));
  EXPECT_EQ(Saved(), QStringList({QStringLiteral("2020_01_02_a"), QStringLiteral("2024_05_02_a"),
                                  QStringLiteral("b")}));
}

TEST_F(DownloadRunTest, StreamsAreCapturedUnderTheirOwnNames) {
  server.Route(QStringLiteral("/a.asx"), Answer::Text("<ref href = \"mms://m.test/x/Song.WMA\">"));
  server.Route(QStringLiteral("/no.asx"), Answer::Text("<ref>"));
  MarkOf(QStringLiteral("http://s.test/a.asx"));
  EXPECT_EQ(capture.captured, QStringList(QStringLiteral("http://s.test/a.asx -> ") +
                                          home.Path(QStringLiteral("save/Song.mp3"))));
  EXPECT_EQ(MarkOf(QStringLiteral("http://s.test/no.asx")), QStringLiteral("?"));
  EXPECT_EQ(board.Status(), QStringLiteral("ＵＲＬ無効"));

  capture.result = -3;
  capture.during = [this](const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    state.RequestCancel();
  };
  MarkOf(QStringLiteral("http://s.test/cut.wmv"));
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n  x Cancel - imperfect -3\r\n    http://s.test/cut.wmv\r\n\r\n");
  EXPECT_EQ(Saved(), QStringList());
}

TEST_F(DownloadRunTest, FatalErrorsAndAMissingSelectionAreTold) {
  RunRows();
  Add(QStringLiteral("http://s.test/a"));
  files.DeselectAll();
  RunRows();
  EXPECT_EQ(LogText(), "") << "an empty entry";
  home.Write(QStringLiteral("save"), "a file");
  MarkOf(QStringLiteral("http://s.test/a"));
  QFile::remove(home.Path(QStringLiteral("save")));
  capture.result = 61;
  MarkOf(QStringLiteral("http://s.test/a.php"));
  ASSERT_EQ(messages.boxes.size(), 4U);
  EXPECT_TRUE(messages.Texts()[0].startsWith(
      QStringLiteral("未選択|ファイルリスト作成されていません！\r\n\r\n[URLリスト]項目を選択⇒")));
  EXPECT_EQ(messages.Texts()[1],
            QStringLiteral("未選択|ファイルリストが選択されていません！\r\n\r\n"
                           "ファイルを選択後に再度実行して下さい。"));
  EXPECT_TRUE(messages.Texts()[2].startsWith(QStringLiteral("続行不可エラー発生|75 ")));
  EXPECT_TRUE(messages.Texts()[2].endsWith(home.Path(QStringLiteral("save"))));
  EXPECT_TRUE(QRegularExpression(QStringLiteral("^続行不可エラー発生\\|空き容量不足です。\r\n\r\n"
                                                "Free Space = [0-9]{1,3}(,[0-9]{3})* kbyte$"))
                  .match(messages.Texts()[3])
                  .hasMatch())
      << messages.Texts()[3].toStdString();
}

TEST_F(DownloadRunTest, RowsThatTheUserSortsOrDeletesMeanwhileAreMetOnce) {
  server.SetFallback([this](const test::ReceivedRequest& request) {
    // While "b" is under way, "a" and "c" change places and "d" is deleted.
    if (request.target == QStringLiteral("/b") && server.Hits(QStringLiteral("/b")) == 1) {
      files.Reorder({2, 1, 0, 3});
      for (int row = 0; row < 3; ++row) files.SetSelected(row, false);
      files.RemoveSelected();
      files.SetSelected(0, true);
      files.SetSelected(1, true);
    }
    return Answer::Text("x");
  });
  for (const char* name : {"a", "b", "c", "d"}) {
    Add(QStringLiteral("http://s.test/") + QString::fromUtf8(name));
  }
  RunRows();
  EXPECT_EQ(Saved(), QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
  ASSERT_EQ(files.Count(), 3);
  for (int row = 0; row < 3; ++row) {
    EXPECT_EQ(files.Row(row)[FileListRow::Mark], QStringLiteral("o")) << row;
  }
}

}  // namespace
}  // namespace zentorin
