// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>

#include <sys/stat.h>

#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

using test::Answer;
using test::LoopbackServer;

class Progress : public DownloadProgress {
 public:
  void SetCaption(const QString& fraction) override { captions.append(fraction); }
  void SetBytes(qint64 written) override {
    bytes = written;
    if (written > 0 && onBytes) onBytes();
  }

  QStringList captions;
  qint64 bytes = 0;
  std::function<void()> onBytes;
};

class SingleDownloadTest : public test::DownloadTest {
 protected:
  int Fetch(const char* target, const QString& file) {
    return QCoro::waitFor(
        single.DownloadToFile(QString("http://site.test") + target, file, &progress));
  }

  QString path = home.Path("f");
  Progress progress;
  SingleDownload single{engine, http, state};
};

TEST_F(SingleDownloadTest, AnOldFileIsWrittenOverFromItsStartAndNotTruncated) {
  home.Write("f", QByteArray(100, 'o'));
  server.Route("/a", Answer::Text("0123456789"));
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read("f"), "0123456789" + QByteArray(90, 'o'));
  EXPECT_EQ(server.Requests().last().Header("User-Agent"), "Zentorin");
}

TEST_F(SingleDownloadTest, ABodyComesWholeAndTheCaptionOfAKnownLengthStaysAtZero) {
  Answer unknown = Answer::Text("abc").Ends(Answer::Ending::Close);
  unknown.contentLength = "";
  server.Route("/unknown", unknown);
  EXPECT_EQ(Fetch("/unknown", path), 0);
  EXPECT_EQ(home.Read("f"), "abc");
  EXPECT_TRUE(progress.captions.isEmpty());
  constexpr qint64 kBytes = 250'000;
  server.Route("/a", Answer::Generated(kBytes));
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read("f"), LoopbackServer::GeneratedBytes(0, kBytes));
  EXPECT_EQ(progress.captions, QStringList(3, "0.000")) << "one for each block";
  EXPECT_EQ(progress.bytes, kBytes);
}

TEST_F(SingleDownloadTest, ResultsAndWhatTheyLeave) {
  server.Route("/empty", Answer::Text({}));
  server.Route("/500", Answer::Status(500));
  server.Route("/short", Answer::Generated(300'000).Ends(Answer::Ending::CutOff, 150'000));
  server.Route("/silent", Answer::Text("x").Ends(Answer::Ending::CutOff, 0));
  struct Case {
    const char* target;
    int code;
    bool leavesFile;
  };
  for (const Case& c : {Case{"/empty", 0, true}, Case{"/404", -1, false}, Case{"/500", -1, false},
                        Case{"/short", 57, true}, Case{"/silent", 57, true}}) {
    QFile::remove(path);
    EXPECT_EQ(Fetch(c.target, path), c.code) << c.target;
    EXPECT_EQ(QFileInfo::exists(path), c.leavesFile) << c.target;
    EXPECT_FALSE(single.FileRefused()) << c.target;
  }
  EXPECT_EQ(QCoro::waitFor(single.DownloadToFile("mms://h/a", path, nullptr)), -1);
}

TEST_F(SingleDownloadTest, ACancelLeavesTheBlockInHandUnwritten) {
  server.Route("/a", Answer::Generated(10'000'000));
  progress.onBytes = [this] { state.RequestCancel(); };
  EXPECT_EQ(Fetch("/a", path), 1);
  EXPECT_EQ(QFileInfo(path).size(), HttpTransfer::kBlockBytes);
}

TEST_F(SingleDownloadTest, AFullDiskIsError61) {
  server.Route("/a", Answer::Generated(250'000));
  SingleDownload full(engine, http, state, [](int, const void*, size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  });
  EXPECT_EQ(QCoro::waitFor(full.DownloadToFile("http://site.test/a", path, {})), 61);
}

TEST_F(SingleDownloadTest, WhatIsNoRegularFileIsRefusedAtOnce) {
  server.Route("/a", Answer::Text("new"));
  const QString target = home.Write("target", "old");
  QFile::link(target, home.Path("link"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(home.Path("pipe")).constData(), 0600), 0);
  for (const char* name : {"link", "pipe", ""}) {
    EXPECT_EQ(Fetch("/a", home.Path(name)), 75) << name;
    EXPECT_TRUE(single.FileRefused()) << name;
  }
  EXPECT_EQ(home.Read("target"), "old");
  EXPECT_EQ(Fetch("/a", home.Path("missing/f")), 76);
}

TEST_F(SingleDownloadTest, TheWholeBodyWayWritesAllButA404AndABrokenBody) {
  server.Route("/a", Answer::Text("new"));
  server.Route("/short", Answer::Text("newer").Ends(Answer::Ending::CutOff, 3));
  const char* const cases[][2] = {{"/a", "newld"}, {"/404", "oldld"}, {"/short", "oldld"}};
  for (const auto& [target, content] : cases) {
    home.Write("f", "oldld");
    EXPECT_EQ(QCoro::waitFor(single.HTTPDownloadFile(QString("http://site.test") + target, path)),
              0);
    EXPECT_EQ(home.Read("f"), content) << target;
  }
}

}  // namespace
}  // namespace zentorin
