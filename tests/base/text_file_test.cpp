// SPDX-License-Identifier: MIT
#include "base/text_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
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
  const QString fifo = dir.Path(QStringLiteral("pipe"));
  ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  const QString file = dir.Write(QStringLiteral("a.txt"), "12345");
  using Case = std::tuple<QString, RunTimeError>;
  const std::vector<Case> cases = {
      {dir.Path(QStringLiteral("none")), RunTimeError::PathMissing},
      {file + QStringLiteral("/below"), RunTimeError::PathMissing},
      {dir.Path(), RunTimeError::PathAccess},
      {fifo, RunTimeError::PathAccess},
      {QStringLiteral("/dev/zero"), RunTimeError::PathAccess},
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
  const QString target = dir.Write(QStringLiteral("real/a.txt"), "old");
  const QString link = dir.Path(QStringLiteral("link.txt"));
  ASSERT_TRUE(QFile::link(QStringLiteral("real/a.txt"), link));
  ASSERT_TRUE(WriteWholeFile(link, "new").Ok());
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(dir.Read(QStringLiteral("real/a.txt")), "new");
  ASSERT_TRUE(QFile::remove(target));
  const FileOutcome dangling = WriteWholeFile(link, "again");
  EXPECT_TRUE(dangling.Ok()) << dangling.message.toStdString();
  EXPECT_EQ(dir.Read(QStringLiteral("real/a.txt")), "again");
}

TEST(TextFile, RefusesPlacesThatCannotBeWritten) {
  const test::TempDir dir;
  const QString file = dir.Write(QStringLiteral("a.txt"), "old");
  const QString dangling = dir.Path(QStringLiteral("dangling"));
  const QString loop = dir.Path(QStringLiteral("loop"));
  ASSERT_TRUE(QFile::link(QStringLiteral("nowhere/a.txt"), dangling));
  ASSERT_TRUE(QFile::link(QStringLiteral("loop"), loop));
  using Case = std::tuple<QString, RunTimeError>;
  const std::vector<Case> cases = {
      {dir.Path(), RunTimeError::PathAccess},
      {QStringLiteral("/dev/null"), RunTimeError::PathAccess},
      {dir.Path(QStringLiteral("none/a.txt")), RunTimeError::PathMissing},
      {file + QStringLiteral("/below"), RunTimeError::PathMissing},
      {dangling, RunTimeError::PathMissing},
      {loop, RunTimeError::PathAccess},
      {dir.Path(QString(300, QLatin1Char('a'))), RunTimeError::BadFileName},
      {file + QChar(QChar::Null), RunTimeError::BadFileName},
  };
  for (const auto& [path, error] : cases) ExpectFailure(WriteWholeFile(path, "new"), error, path);
  EXPECT_EQ(dir.Read(QStringLiteral("a.txt")), "old");
}

TEST(TextFile, AWriteThatFailsMidwayKeepsTheOldFileAndLeavesNoOther) {
  const test::TempDir dir;
  const QString file = dir.Write(QStringLiteral("a.txt"), "old");
  for (const int size : {5000, 5'000'000}) {  // fails on flushing, fails on writing
    const FileSizeLimit limit(4096);
    const FileOutcome outcome = WriteWholeFile(file, QByteArray(size, 'x'));
    EXPECT_FALSE(outcome.Ok());
    EXPECT_TRUE(outcome.message.contains(file)) << outcome.message.toStdString();
  }
  EXPECT_EQ(dir.Read(QStringLiteral("a.txt")), "old");
  EXPECT_EQ(QDir(dir.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(TextFile, NumbersSystemErrors) {
  EXPECT_EQ(RunTimeErrorFromErrno(ENOSPC), RunTimeError::DiskFull);
  EXPECT_EQ(RunTimeErrorFromErrno(EDQUOT), RunTimeError::DiskFull);
  EXPECT_EQ(RunTimeErrorFromErrno(EROFS), RunTimeError::PermissionDenied);
  EXPECT_EQ(RunTimeErrorFromErrno(EIO), RunTimeError::InputOutput);
  EXPECT_EQ(RunTimeErrorFromErrno(EMFILE), RunTimeError::Other);
}

}  // namespace
}  // namespace zentorin
