// SPDX-License-Identifier: MIT
#include "download/download_run.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <random>

#include "base/ansi_text.h"
#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;

using DownloadRunTest = test::DownloadTest;

TEST_F(DownloadRunTest, EveryCodeHasItsMarkAndItsLogText) {
  // A run that ends with an unrecorded stream leaves no entry.
  capture.result.code = RowCode::DownloadFailed;
  EXPECT_EQ(MarkOf("http://s.test/a.php"), "x");
  EXPECT_FALSE(log.Exists());
  EXPECT_EQ(Status(), "  x Error - failure download ");
  struct Case {
    RowCode code;
    const char* mark;
    const char* log;  // "U" stands for the address, "F" for the line that names the folder
    bool errorFlag = false;
    const char* status = "ダウンロード中";
  };
  const Case cases[] = {
      {RowCode::ToolNotInstalled, "x", "  x Error - VLC not installed -5    UF", true,
       "  x Error - VLC not installed "},
      {RowCode::FolderNotCreated, "x", "  x Error - failure to create folder -4    UF"},
      {RowCode::Imperfect, "x", "  x Error - imperfect -3\n    U\n\n", true,
       "  x Error - imperfect "},
      {RowCode::Fatal, "x", "  x Error - fatal-1\n    U\n    応答がない\n\n", true,
       "  x Error - fatal"},
      {RowCode::Complete, "o", "  o Complete\n    U\n\n", false, "ダウンロード完了"},
      {RowCode::Cancelled, " ", "  - Cancel    U", false, "Cancel"},
      {RowCode::SkipExisting, "-", "  - Skip - already existed\n    U\n\n", false, "alreay exist"},
      {RowCode::SkipNone, "?", "  ? Skip - None\n    U\n\n"},
      {RowCode::Skip, "-", "  - Skip \n    U\n\n\n"},
      {RowCode::OutOfDiskSpace, "-", "  x out of disk space \n    U\n"},
      {RunTimeError::InputOutput, "x", "  x Error 57\n    U\n\n", true},
  };
  for (const Case& c : cases) {
    capture.result.code = c.code;
    capture.result.reason = c.code == RowCode::Fatal ? "応答がない" : "";
    const int number = c.code.Number();
    const QString expected = QString("< daily >\n\n%1")
                                 .arg(c.log)
                                 .replace("F", '\n' + QString(38, ' ') + "save\\\n\n")
                                 .replace("U", "http://s.test/a.php")
                                 .replace("\n", "\r\n");
    EXPECT_EQ(MarkOf("http://s.test/a.php"), c.mark) << number;
    EXPECT_EQ(LogText(), EncodeAnsi(expected).bytes) << number;
    EXPECT_EQ(Status(), c.status) << number;
    EXPECT_EQ(outcome.errorFlag, c.errorFlag) << number;
    EXPECT_EQ(outcome.fatal, number == -4 || number == 61) << number;
    EXPECT_EQ(outcome.anyFailure, outcome.errorFlag || outcome.fatal) << number;
    EXPECT_EQ(activity.Now().row.count, 0) << number;
  }
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
  int counted = 0;
  QObject::connect(&server, &test::LoopbackServer::RequestReceived,
                   [&] { counted = qMax(counted, activity.Now().row.count); });
  RunRows();
  EXPECT_EQ(Marks(), "o|?|x|-|||x");
  EXPECT_EQ(Saved(), "a.mp3|old") << "what broke off is deleted";
  EXPECT_EQ(home.Read("save/old"), "old");
  EXPECT_EQ(files.SelectedCount(), 0);
  EXPECT_EQ(files.CurrentRow(), 6);
  EXPECT_EQ(opener.opened, QStringList("folder:" + home.Path("save")));
  EXPECT_EQ(counted, 6);
  EXPECT_EQ(LogText().count("http://"), 5) << "what leads nowhere leaves no trace";
  EXPECT_TRUE(LogText().endsWith("  x Error 52\r\n    http://s.test/dir/\r\n\r\n"));
  EXPECT_EQ(server.Hits("/old"), 0) << "nothing is asked ahead for what is there";
  EXPECT_EQ(server.Hits("/none"), 1) << "asked ahead or not, a file is asked once";

  job.EditFlag(TargetUrlItem::OverWrite, true);
  EXPECT_EQ(MarkOf("http://s.test/old"), "o");
  EXPECT_EQ(home.Read("save/old"), "new");
}

TEST_F(DownloadRunTest, ACancelDeletesThePartialFileOrStreamAndEndsTheRun) {
  server.Route("/a", Answer::Generated(2'000'000).Ends(Answer::Ending::Stall, 500'000));
  Add("http://s.test/a");
  Add("http://s.test/b");
  CancelSource source;
  QObject::connect(&activity, &Activity::Changed, [&] {
    if (activity.Now().bytes > 0) source.Cancel();
  });
  EXPECT_TRUE(RunRows(source).cancelled);
  EXPECT_EQ(Saved(), "");
  EXPECT_EQ(Marks(), " |");
  EXPECT_EQ(LogText(), "< daily >\r\n\r\n  - Cancel    http://s.test/a");
  EXPECT_EQ(files.SelectedCount(), 2);

  CancelSource second;
  capture.result.code = RowCode::Imperfect;
  capture.during = [&](const QString&) {
    home.Write("save/cut.wmv", "x");
    second.Cancel();
  };
  files.ClearFileList();
  Add("http://s.test/cut.wmv");
  RunRows(second);
  EXPECT_EQ(LogText(),
            "< daily >\r\n\r\n  x Cancel - imperfect -3\r\n    http://s.test/cut.wmv\r\n\r\n");
  EXPECT_EQ(Saved(), "");
}

TEST_F(DownloadRunTest, NoRowIsWorseForHavingBeenAskedEarly) {
  job.EditFlag(TargetUrlItem::OverWrite, true);
  Answer slow = Answer::Generated(600'000);
  slow.pieceBytes = 60'000;
  slow.pieceInterval = std::chrono::milliseconds(5);
  Answer gone;
  gone.raw = " ";
  const QList<Answer> refusals = {
      Answer::Status(503), gone,
      Answer::Generated(3'000'000).Ends(Answer::Ending::CutOff, 300'000)};
  for (const Answer& refusal : refusals) {
    // One answer at a time: whoever comes meanwhile is sent away.
    server.SetFallback(
        [&](const test::ReceivedRequest&) { return server.Busy() > 1 ? refusal : slow; });
    files.ClearFileList();
    for (int row = 0; row < 8; ++row) {
      home.Write("save/" + QString::number(row), "old");
      Add("http://s.test/" + QString::number(row));
    }
    EXPECT_EQ(ExitStatusOf(RunRows()), kExitDone);
    EXPECT_EQ(Marks(), "o|o|o|o|o|o|o|o");
    for (int row = 0; row < 8; ++row) {
      EXPECT_EQ(home.Read("save/" + QString::number(row)),
                test::LoopbackServer::GeneratedBytes(0, 600'000));
    }
  }
  // What is refused for good is asked for once, and nobody else twice for its sake.
  server.SetFallback([&](const test::ReceivedRequest& request) {
    return request.target == "/5" ? Answer::Status(403) : Answer::Text("x");
  });
  files.ClearFileList();
  for (int row = 0; row < 30; ++row) Add("http://t.test/" + QString::number(row));
  const qsizetype before = server.Requests().size();
  RunRows();
  EXPECT_EQ(server.Requests().size() - before, 30);
  server.SetFallback([&](const test::ReceivedRequest&) { return Answer::Status(503); });
  home.Write("save/0", "old");
  EXPECT_EQ(MarkOf("http://s.test/0") + home.Read("save/0"), "?old");
  EXPECT_EQ(ExitStatusOf(outcome), kExitFailures);
}

// A site whose answers break off at odd places, also those that go on where one stopped.
TEST_F(DownloadRunTest, BodiesThatBreakOffBecomeWholeAndAreNeverSpliced) {
  enum Ranges { None, Honest, Wrong, OtherVersion };
  std::mt19937 random(7);
  const QByteArray first = test::LoopbackServer::GeneratedBytes(0, 400'000);
  const QByteArray second = test::LoopbackServer::GeneratedBytes(1, 350'000);
  job.EditFlag(TargetUrlItem::OverWrite, true);
  for (const Ranges ranges : {None, Honest, Wrong, OtherVersion}) {
    files.ClearFileList();
    for (int row = 0; row < 12; ++row) {
      const QString target = QString("/f%1-%2").arg(ranges).arg(row);
      server.RouteTo(target, [=, this, &random](const test::ReceivedRequest& request) {
        const int tries = server.Hits(target);
        const bool isNew = ranges == OtherVersion && tries > 1;
        const QByteArray& body = isNew ? second : first;
        const QByteArray tag = isNew ? "\"2\"" : "\"1\"";
        const qint64 from = request.Header("Range").mid(6).replace('-', "").toLongLong();
        const bool isPart = ranges != None && from > 0 && request.Header("If-Range") == tag;
        Answer answer = Answer::Text(isPart ? body.mid(from) : body).With("ETag", tag);
        if (ranges != None) answer = answer.With("Accept-Ranges", "bytes");
        if (isPart) {
          answer.status = 206;
          const QByteArray begin = QByteArray::number(ranges == Wrong ? from + 1 : from);
          const QByteArray last = QByteArray::number(body.size() - 1);
          const QByteArray size = QByteArray::number(body.size());
          answer = answer.With("Content-Range", "bytes " + begin + '-' + last + '/' + size);
        }
        const qint64 cut = std::uniform_int_distribution<qint64>(0, answer.body.size() - 1)(random);
        return tries % 3 == 0 ? answer : answer.Ends(Answer::Ending::CutOff, cut);
      });
      home.Write("save" + target, row % 2 == 0 ? QByteArray() : QByteArray(500'000, 'o'));
      Add("http://s.test" + target);
    }
    EXPECT_EQ(ExitStatusOf(RunRows()), kExitDone) << ranges;
    const bool asksForParts = std::ranges::any_of(
        server.Requests(), [](const auto& request) { return !request.Header("Range").isEmpty(); });
    EXPECT_EQ(asksForParts, ranges != None);
    const QByteArray& wanted = ranges == OtherVersion ? second : first;
    for (int row = 0; row < 12; ++row) {
      const QByteArray saved = home.Read(QString("save/f%1-%2").arg(ranges).arg(row));
      EXPECT_TRUE(saved.startsWith(wanted)) << ranges << ' ' << row;
      EXPECT_FALSE(saved.mid(wanted.size()).contains('\1')) << "of another try";
    }
  }
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

TEST_F(DownloadRunTest, NamesAreThoseOfTheAddressUnlessTheUserWantsThemReadable) {
  server.SetFallback([](const test::ReceivedRequest&) { return Answer::Text("x"); });
  job.EditFlag(TargetUrlItem::TreeFolder, true);
  for (const bool decode : {false, true}) {
    workspace.choices.decodeNames = decode;
    EXPECT_EQ(MarkOf("http://o.test/%E6%97%A5/%E6%9C%AC.mp3?q=%31"), "o");
    EXPECT_EQ(home.Read(decode ? "save/zz-External/o.test/日/本.mp3?q=1"
                               : "save/zz-External/o.test/%E6%97%A5/%E6%9C%AC.mp3?q=%31"),
              "x");
  }
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
  // The file, its type, the stream in it and what that is saved as; the latter are empty for none.
  using Case = std::tuple<QByteArray, const char*, QString, QString>;
  const char* plain = "video/x-ms-asf";
  const QByteArray title = "<title>\x93\xfa\x96\x7b\x8c\xea</title>";
  for (const auto& [asx, type, stream, name] : std::initializer_list<Case>{
           {R"(<asx version="3.0"><entry><ref href="mms://m.test/1.wmv"/></entry>)", plain,
            "mms://m.test/1.wmv", "1.wmv"},
           {R"(<ASX><ENTRY><REF HREF  =  "MMS://m.test/x/2.WMV"/></ENTRY></ASX>)", plain,
            "MMS://m.test/x/2.WMV", "2.WMV"},
           {title +
                "<ref href=\"mms://m.test/\x93\xfa.wmv\"/>\r\n<ref href=\"mms://m.test/x.wmv\"/>",
            "text/html; charset=Shift_JIS", "mms://m.test/日.wmv", "日.wmv"},
           {R"(<ref href="http://m.test/h.wmv"/>)" + title + R"(<ref href="mms://m.test/3.WMA"/>)",
            "application/octet-stream", "mms://m.test/3.WMA", "3.mp3"},
           {R"(<asx><ref href="http://m.test/h.wmv"/></asx>)", plain, "", ""},
           {"", plain, "", ""}}) {
    capture.captured.clear();
    server.Route("/a.asx", Answer::Text(asx, type));
    EXPECT_EQ(MarkOf("http://s.test/a.asx"), name.isEmpty() ? "?" : "o");
    EXPECT_EQ(capture.captured.join('|'),
              name.isEmpty() ? QString() : stream + " -> " + home.Path("save/") + name);
  }
  EXPECT_EQ(Status(), "ＵＲＬ無効");
  EXPECT_EQ(activity.Now().message.tone, Tone::Fault);
  EXPECT_TRUE(LogText().contains("? Skip - None"));
}

TEST_F(DownloadRunTest, FatalErrorsAndAMissingSelectionAreTold) {
  EXPECT_TRUE(RunRows().nothingSelected);
  Add("http://s.test/a");
  files.DeselectAll();
  EXPECT_TRUE(RunRows().nothingSelected);
  EXPECT_EQ(LogText(), "") << "an empty entry";
  home.Write("save", "a file");
  MarkOf("http://s.test/a");
  QFile::remove(home.Path("save"));
  capture.result.code = RowCode::OutOfDiskSpace;
  MarkOf("http://s.test/a.php");
  ASSERT_EQ(messages.boxes.size(), 4U);
  const QString folder = QRegularExpression::escape(home.Path("save"));
  const QString expected[] = {"未選択\\|ファイルリスト作成されていません！",
                              "未選択\\|ファイルリストが選択されていません！",
                              "続行不可エラー発生\\|75 [^$]*" + folder + '$',
                              "続行不可エラー発生\\|空き容量不足です。\r\n\r\n"
                              "Free Space = [0-9]{1,3}(,[0-9]{3})* kbyte$"};
  for (int i = 0; i < 4; ++i) {
    const QString text = messages.Texts()[i];
    EXPECT_TRUE(text.contains(QRegularExpression('^' + expected[i]))) << text.toStdString();
  }
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
