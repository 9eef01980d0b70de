// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>

#include <sys/stat.h>

#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;
using test::LoopbackServer;

class SingleDownloadTest : public test::DownloadTest {
 protected:
  int Fetch(const char* target, const QString& file) {
    last = QCoro::waitFor(single.DownloadToFile(QString("http://site.test") + target, file));
    return last.code.Number();
  }

  QString path = home.Path("f");
  CancelSource cancel;
  SingleDownload single{*workspace.engine, activity, workspace.choices, cancel.Token()};
  FileDownload last;
};

TEST_F(SingleDownloadTest, ABodyComesWholeOverTheStartOfAnOldFileAndItsBytesAreCounted) {
  Answer unknown = Answer::Text("abc").Ends(Answer::Ending::Close);
  unknown.contentLength = "";
  server.Route("/unknown", unknown);
  home.Write("f", "an old one");
  EXPECT_EQ(Fetch("/unknown", path), 0);
  EXPECT_EQ(home.Read("f"), "abcold one") << "it is not truncated";
  EXPECT_EQ(server.Requests().last().Header("User-Agent"), "Zentorin");
  EXPECT_EQ(activity.Now().length, 0);
  constexpr qint64 kBytes = 250'000;
  server.Route("/a", Answer::Generated(kBytes));
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read("f"), LoopbackServer::GeneratedBytes(0, kBytes));
  EXPECT_EQ(activity.Now().bytes, kBytes);
  EXPECT_EQ(activity.Now().length, kBytes);
}

TEST_F(SingleDownloadTest, ResultsAndWhatTheyLeave) {
  server.Route("/empty", Answer::Text({}));
  server.Route("/500", Answer::Status(500));
  server.Route("/short", Answer::Generated(300'000).Ends(Answer::Ending::CutOff, 150'000));
  server.Route("/silent", Answer::Text("x").Ends(Answer::Ending::CutOff, 0));
  server.Route("/head", [] {
    Answer answer;
    answer.raw = "HTTP/1.1 200 OK\r\nContent-Le";
    return answer;
  }());
  using Case = std::tuple<const char*, int, bool>;  // the target, the code, an old file is spoiled
  for (const auto& [target, code, spoiled] :
       {Case("/empty", 0, false), Case("/404", -1, false), Case("/500", -1, false),
        Case("/head", -1, false), Case("/short", 57, true), Case("/silent", 57, false)}) {
    QFile::remove(path);
    EXPECT_EQ(Fetch(target, path), code) << target;
    EXPECT_EQ(QFileInfo::exists(path), code == 0) << target << ": a new file is whole or not there";
    home.Write("f", "old");
    EXPECT_EQ(Fetch(target, path), code) << target;
    EXPECT_EQ(last.spoiled, spoiled) << target;
    EXPECT_TRUE(spoiled || home.Read("f") == "old") << target;
  }
  EXPECT_EQ(QCoro::waitFor(single.DownloadToFile("mms://h/a", path)).code, RowCode::Fatal);
  const LocalFile::WriteCall fullDisk = [](int, const void*, size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  SingleDownload full(*workspace.engine, activity, workspace.choices, cancel.Token(), fullDisk);
  EXPECT_EQ(QCoro::waitFor(full.DownloadToFile("http://site.test/short", path)).code,
            RowCode::OutOfDiskSpace);
}

TEST_F(SingleDownloadTest, ACancelLeavesTheBlockInHandUnwritten) {
  server.Route("/a", Answer::Generated(10'000'000));
  QObject::connect(&activity, &Activity::Changed, [this] { cancel.Cancel(); });
  home.Write("f", "old");
  EXPECT_EQ(Fetch("/a", path), 1);
  EXPECT_TRUE(last.spoiled);
  EXPECT_EQ(QFileInfo(path).size(), HttpTransfer::kBlockBytes);
}

TEST_F(SingleDownloadTest, WhatIsNoRegularFileIsRefusedAtOnce) {
  server.Route("/a", Answer::Text("new"));
  const QString target = home.Write("target", "old");
  QFile::link(target, home.Path("link"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(home.Path("pipe")).constData(), 0600), 0);
  for (const char* name : {"link", "pipe", ""}) {
    EXPECT_EQ(Fetch("/a", home.Path(name)), 75) << name;
    EXPECT_FALSE(last.spoiled) << name;
  }
  EXPECT_EQ(home.Read("target"), "old");
  EXPECT_EQ(Fetch("/a", home.Path("missing/f")), 76);
}

TEST_F(SingleDownloadTest, WhatComesToTheFilesPlaceMeanwhileIsKept) {
  Answer slow = Answer::Text(QByteArray(600'000, 'x'));
  slow.pieceBytes = 200'000;
  slow.pieceInterval = std::chrono::milliseconds(120);  // each is told
  server.Route("/a", slow);
  home.Write("folder/x", "");
  const auto watch = QObject::connect(&activity, &Activity::Changed, [this] {
    EXPECT_FALSE(home.Read("folder/f").startsWith('x')) << "not whole yet";
    home.Write("folder/f", "another's");
  });
  EXPECT_EQ(Fetch("/a", home.Path("folder/f")), RowCode::SkipExisting);
  EXPECT_EQ(home.Read("folder/f"), "another's");
  QObject::disconnect(watch);
  QObject::connect(&activity, &Activity::Changed,
                   [this] { QDir(home.Path("folder")).removeRecursively(); });
  EXPECT_EQ(Fetch("/a", home.Path("folder/g")), 76) << "its folder is gone";
}

TEST_F(SingleDownloadTest, TheWholeBodyWayWritesAllButA404AndABrokenBody) {
  server.Route("/a", Answer::Text("new"));
  server.Route("/short", Answer::Text("newer").Ends(Answer::Ending::CutOff, 3));
  const char* const cases[][2] = {{"/a", "newld"}, {"/404", "oldld"}, {"/short", "oldld"}};
  for (const auto& [target, content] : cases) {
    home.Write("f", "oldld");
    QCoro::waitFor(single.HTTPDownloadFile(QString("http://site.test") + target, path));
    EXPECT_EQ(home.Read("f"), content) << target;
  }
}

}  // namespace
}  // namespace zentorin
