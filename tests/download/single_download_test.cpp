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
  explicit Progress(RunState& state) : state_(state) {}
  void SetCaption(const QString& fraction) override { captions.append(fraction); }
  void SetBytes(qint64 written) override {
    bytes = written;
    if (cancelAt > 0 && written >= cancelAt) state_.RequestCancel();
  }

  QStringList captions;
  qint64 bytes = 0;
  qint64 cancelAt = 0;

 private:
  RunState& state_;
};

class SingleDownloadTest : public test::DownloadTest {
 protected:
  int Fetch(const char* target, const QString& file) {
    const QString url = QStringLiteral("http://site.test") + QString::fromUtf8(target);
    return QCoro::waitFor(single.DownloadToFile(url, file, &progress));
  }

  QString path = home.Path(QStringLiteral("f"));
  Progress progress{state};
  SingleDownload single{engine, http, state};
};

TEST_F(SingleDownloadTest, AnOldFileIsWrittenOverFromItsStartAndNotTruncated) {
  home.Write(QStringLiteral("f"), QByteArray(100, 'o'));
  server.Route(QStringLiteral("/a"), Answer::Text("0123456789"));
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read(QStringLiteral("f")), "0123456789" + QByteArray(90, 'o'));
  EXPECT_EQ(server.Requests().last().Header("User-Agent"), "Zentorin");
}

TEST_F(SingleDownloadTest, ALargeBodyComesWholeAndTheCaptionStaysAtZero) {
  constexpr qint64 kBytes = 250'000;
  server.Route(QStringLiteral("/a"), Answer::Generated(kBytes));
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read(QStringLiteral("f")), LoopbackServer::GeneratedBytes(0, kBytes));
  EXPECT_EQ(progress.captions, QStringList(3, QStringLiteral("0.000"))) << "one for each block";
  EXPECT_EQ(progress.bytes, kBytes);
}

TEST_F(SingleDownloadTest, AnUnknownLengthShowsNoCaption) {
  Answer answer = Answer::Text("abc").Ends(Answer::Ending::Close);
  answer.contentLength = "";
  server.Route(QStringLiteral("/a"), answer);
  EXPECT_EQ(Fetch("/a", path), 0);
  EXPECT_EQ(home.Read(QStringLiteral("f")), "abc");
  EXPECT_TRUE(progress.captions.isEmpty());
}

TEST_F(SingleDownloadTest, ResultsAndWhatTheyLeave) {
  server.Route(QStringLiteral("/empty"), Answer::Text({}));
  server.Route(QStringLiteral("/500"), Answer::Status(500));
  server.Route(QStringLiteral("/short"),
               Answer::Generated(300'000).Ends(Answer::Ending::CutOff, 150'000));
  server.Route(QStringLiteral("/silent"), Answer::Text("x").Ends(Answer::Ending::CutOff, 0));
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
  EXPECT_EQ(QCoro::waitFor(single.DownloadToFile(QStringLiteral("mms://h/a"), path, nullptr)), -1);
}

TEST_F(SingleDownloadTest, ACancelLeavesTheBlockInHandUnwritten) {
  server.Route(QStringLiteral("/a"), Answer::Generated(10'000'000));
  progress.cancelAt = 1;
  EXPECT_EQ(Fetch("/a", path), 1);
  EXPECT_EQ(QFileInfo(path).size(), HttpTransfer::kBlockBytes);
}

TEST_F(SingleDownloadTest, AFullDiskIsError61) {
  server.Route(QStringLiteral("/a"), Answer::Generated(250'000));
  SingleDownload full(engine, http, state, [](int, const void*, size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  });
  EXPECT_EQ(QCoro::waitFor(full.DownloadToFile(QStringLiteral("http://site.test/a"), path, {})),
            61);
}

TEST_F(SingleDownloadTest, WhatIsNoRegularFileIsRefusedAtOnce) {
  server.Route(QStringLiteral("/a"), Answer::Text("new"));
  const QString target = home.Write(QStringLiteral("target"), "old");
  QFile::link(target, home.Path(QStringLiteral("link")));
  ASSERT_EQ(::mkfifo(QFile::encodeName(home.Path(QStringLiteral("pipe"))).constData(), 0600), 0);
  for (const QString& name : {QStringLiteral("link"), QStringLiteral("pipe"), QString()}) {
    EXPECT_EQ(Fetch("/a", home.Path(name)), 75) << name.toStdString();
    EXPECT_TRUE(single.FileRefused()) << name.toStdString();
  }
  EXPECT_EQ(home.Read(QStringLiteral("target")), "old");
  EXPECT_EQ(Fetch("/a", home.Path(QStringLiteral("missing/f"))), 76);
}

TEST_F(SingleDownloadTest, TheWholeBodyWayWritesAllButA404AndABrokenBody) {
  server.Route(QStringLiteral("/a"), Answer::Text("new"));
  server.Route(QStringLiteral("/500"), Answer::Status(500));
  server.Route(QStringLiteral("/short"), Answer::Text("newer").Ends(Answer::Ending::CutOff, 3));
  struct Case {
    const char* target;
    const char* content;
  };
  for (const Case& c : {Case{"/a", "newld"}, Case{"/404", "oldld"}, Case{"/short", "oldld"}}) {
    home.Write(QStringLiteral("f"), "oldld");
    const QString url = QStringLiteral("http://site.test") + QString::fromUtf8(c.target);
    EXPECT_EQ(QCoro::waitFor(single.HTTPDownloadFile(url, path)), 0);
    EXPECT_EQ(home.Read(QStringLiteral("f")), c.content) << c.target;
  }
}

}  // namespace
}  // namespace zentorin
