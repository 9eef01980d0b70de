// SPDX-License-Identifier: MIT
#include "base/text_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <utility>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "base/file_names.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

// Lets no file of this process grow beyond a size while it lives, as a full disk would.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{.rlim_cur = bytes, .rlim_max = old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit old_{};
  void (*handler_)(int);
};

void ExpectFailure(const FileOutcome& outcome, RunTimeError error, const QString& path) {
  EXPECT_EQ(outcome.error, static_cast<int>(error)) << outcome.message.toStdString();
  EXPECT_TRUE(outcome.message.contains(EscapeForDisplay(path))) << outcome.message.toStdString();
}

TEST(TextFile, RefusesWhatCannotBeReadOrWrittenAndLeavesItAlone) {
  const test::TempDir dir;
  const QString fifo = dir.Path("pipe");
  const QString dangling = dir.Path("dangling");
  const QString loop = dir.Path("loop");
  ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link("nowhere/a.txt", dangling) && QFile::link("loop", loop));
  const QString file = dir.Write("a.txt", "12345");
  QByteArray bytes("before");
  using Case = std::pair<QString, RunTimeError>;
  for (const auto& [path, error] :
       {Case(dir.Path("none/a.txt"), RunTimeError::PathMissing),
        Case(file + "/below", RunTimeError::PathMissing), Case(dangling, RunTimeError::PathMissing),
        Case(dir.Path(), RunTimeError::PathAccess), Case(fifo, RunTimeError::PathAccess),
        Case(loop, RunTimeError::PathAccess), Case("/dev/zero", RunTimeError::PathAccess),
        Case(dir.Path(QString(300, u'a')), RunTimeError::BadFileName),
        Case(file + QChar(QChar::Null), RunTimeError::BadFileName)}) {
    ExpectFailure(ReadWholeFile(path, 4, bytes), error, path);
    ExpectFailure(WriteWholeFile(path, "new"), error, path);
  }
  ExpectFailure(ReadWholeFile(file, 4, bytes), RunTimeError::Other, file);
  EXPECT_EQ(bytes, "before");
  EXPECT_TRUE(ReadWholeFile(file, 5, bytes).Ok());
  EXPECT_EQ(bytes, "12345");
}

TEST(TextFile, ReplacesTheFileThatALinkLeadsTo) {
  const test::TempDir dir;
  const QString target = dir.Write("real/a.txt", "old");
  const QString link = dir.Path("link.txt");
  ASSERT_TRUE(QFile::link("real/a.txt", link));
  ASSERT_TRUE(WriteWholeFile(link, "new").Ok());
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(dir.Read("real/a.txt"), "new");
  ASSERT_TRUE(QFile::remove(target));
  const FileOutcome dangling = WriteWholeFile(link, "again");
  EXPECT_TRUE(dangling.Ok()) << dangling.message.toStdString();
  EXPECT_EQ(dir.Read("real/a.txt"), "again");
}

TEST(TextFile, AWriteThatFailsMidwayKeepsTheOldFileAndLeavesNoOther) {
  const test::TempDir dir;
  const QString file = dir.Write("a.txt", "old");
  for (const int size : {5000, 5'000'000}) {  // fails on flushing, fails on writing
    const FileSizeLimit limit(4096);
    const FileOutcome outcome = WriteWholeFile(file, QByteArray(size, 'x'));
    EXPECT_FALSE(outcome.Ok());
    EXPECT_TRUE(outcome.message.contains(file)) << outcome.message.toStdString();
  }
  EXPECT_EQ(dir.Read("a.txt"), "old");
  EXPECT_EQ(QDir(dir.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

}  // namespace
}  // namespace zentorin
