// SPDX-License-Identifier: MIT
#include "base/text_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <tuple>
#include <vector>

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

TEST(TextFile, RefusesWhatCannotBeReadAndLeavesTheBytesAlone) {
  const test::TempDir dir;
  const QString fifo = dir.Path("pipe");
  ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  const QString file = dir.Write("a.txt", "12345");
  using Case = std::tuple<QString, RunTimeError>;
  const std::vector<Case> cases = {
      {dir.Path("none"), RunTimeError::PathMissing},
      {file + "/below", RunTimeError::PathMissing},
      {dir.Path(), RunTimeError::PathAccess},
      {fifo, RunTimeError::PathAccess},
      {"/dev/zero", RunTimeError::PathAccess},
      {dir.Path(QString(300, QLatin1Char('a'))), RunTimeError::BadFileName},
      {file + QChar(QChar::Null), RunTimeError::BadFileName},
      {file, RunTimeError::Other},  // longer than allowed
  };
  QByteArray bytes("before");
  for (const auto& [path, error] : cases) ExpectFailure(ReadWholeFile(path, 4, bytes), error, path);
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

TEST(TextFile, RefusesPlacesThatCannotBeWritten) {
  const test::TempDir dir;
  const QString file = dir.Write("a.txt", "old");
  const QString dangling = dir.Path("dangling");
  const QString loop = dir.Path("loop");
  ASSERT_TRUE(QFile::link("nowhere/a.txt", dangling));
  ASSERT_TRUE(QFile::link("loop", loop));
  using Case = std::tuple<QString, RunTimeError>;
  for (const auto& [path, error] :
       {Case(dir.Path(), RunTimeError::PathAccess), Case("/dev/null", RunTimeError::PathAccess),
        Case(dir.Path("none/a.txt"), RunTimeError::PathMissing),
        Case(file + "/below", RunTimeError::PathMissing), Case(dangling, RunTimeError::PathMissing),
        Case(loop, RunTimeError::PathAccess),
        Case(dir.Path(QString(300, QLatin1Char('a'))), RunTimeError::BadFileName),
        Case(file + QChar(QChar::Null), RunTimeError::BadFileName)})
    ExpectFailure(WriteWholeFile(path, "new"), error, path);
  EXPECT_EQ(dir.Read("a.txt"), "old");
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
