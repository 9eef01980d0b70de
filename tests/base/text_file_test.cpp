// SPDX-License-Identifier: MIT
#include "base/text_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "base/file_names.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

void ExpectFailure(const Outcome& outcome, RunTimeError error, const QString& path) {
  EXPECT_EQ(outcome.error, error) << outcome.message.toStdString();
  EXPECT_TRUE(outcome.message.contains(EscapeForDisplay(path))) << outcome.message.toStdString();
}

TEST(TextFile, RefusesWhatCannotBeReadOrWrittenAndLeavesItAlone) {
  const test::TempDir dir;
  const QString fifo = dir.Path("pipe");
  const QString dangling = dir.Path("dangling");
  ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link("nowhere/a.txt", dangling));
  const QString file = dir.Write("a.txt", "12345");
  QByteArray bytes("before");
  using Case = std::pair<QString, RunTimeError>;
  for (const auto& [path, error] :
       {Case(dir.Path("none/a.txt"), RunTimeError::PathMissing),
        Case(dangling, RunTimeError::PathMissing), Case(dir.Path(), RunTimeError::PathAccess),
        Case(fifo, RunTimeError::PathAccess),
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
  dir.Write("real/a.txt", "old");
  const QString link = dir.Path("link.txt");
  ASSERT_TRUE(QFile::link("real/a.txt", link));
  ASSERT_TRUE(WriteWholeFile(link, "new").Ok());
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(dir.Read("real/a.txt"), "new");
  ASSERT_TRUE(QFile::remove(dir.Path("real/a.txt")));
  EXPECT_TRUE(WriteWholeFile(link, "again").Ok()) << "the link dangles";
  EXPECT_EQ(dir.Read("real/a.txt"), "again");
}

TEST(TextFile, AWriteThatFailsMidwayKeepsTheOldFileAndLeavesNoOther) {
  const test::TempDir dir;
  const QString file = dir.Write("a.txt", "old");
  // No file may grow beyond the limit, as on a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit full{.rlim_cur = 4096, .rlim_max = old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  for (const int size : {5000, 5'000'000}) {  // fails on flushing, fails on writing
    const Outcome outcome = WriteWholeFile(file, QByteArray(size, 'x'));
    EXPECT_TRUE(!outcome.Ok() && outcome.message.contains(file)) << outcome.message.toStdString();
  }
  setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_EQ(dir.Read("a.txt"), "old");
  EXPECT_EQ(QDir(dir.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

}  // namespace
}  // namespace zentorin
