// SPDX-License-Identifier: MIT
#include <QCryptographicHash>

#include <gtest/gtest.h>

#include "jobs/log_file.h"
#include "jobs/pattern_lists.h"
#include "tests/support/fakes.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

using test::SettableClock;
using test::TempDir;

TEST(LogFile, KeepsEveryEntryOfARunAndOnlyThat) {
  const TempDir dir;
  const SettableClock clock;
  const QString name = "log.txt";
  LogFile log(dir.Write(name, "an older run"), clock);
  const QByteArray header = "-- 2024/05/01 23:30:05 ----\r\n";
  ASSERT_TRUE(log.Append("Start - 一括", true).Ok());
  ASSERT_TRUE(log.Append("a\r\nb\u202E\u0007😀€").Ok());
  ASSERT_TRUE(log.Append({}).Ok());
  ASSERT_TRUE(log.Sync().Ok() && log.WasWritten());
  EXPECT_EQ(dir.Read(name), header + "Start - \x88\xEA\x8A\x87\r\n\r\n\r\n" + header +
                                "a\r\nb\\u{202e}\\u{7}\\u{1f600}\\u{20ac}\r\n\r\n\r\n" + header +
                                "\r\n\r\n\r\n");
  QString text;
  ASSERT_TRUE(log.Read(text).Ok());
  EXPECT_TRUE(text.contains("Start - 一括"));
  QFile::remove(log.Path());
  EXPECT_FALSE(log.WasWritten()) << "gone meanwhile";
}

TEST(LogFile, ReportsWhatItCannotWrite) {
  const TempDir dir;
  const SettableClock clock;
  for (const QString& path : {dir.Path("none/log.txt"), dir.Path(), QString("/dev/full")}) {
    LogFile log(path, clock);
    for (const bool startNew : {false, true}) {
      const Outcome outcome = log.Append("x", startNew);
      EXPECT_TRUE(!outcome.Ok() && outcome.message.contains(path)) << outcome.message.toStdString();
    }
    EXPECT_FALSE(log.WasWritten());
  }
}

TEST(PatternLists, CreatesTheFileToTheByteAndTakesWhatItHolds) {
  const TempDir dir;
  const QString name = "reglist.txt";
  PatternLists lists;
  ASSERT_TRUE(lists.LoadOrCreate(dir.Path(name)).Ok());
  // The sum was made from the published lists by another program.
  EXPECT_EQ(QCryptographicHash::hash(dir.Read(name), QCryptographicHash::Sha256).toHex(),
            "5b705eae50b19e815e7a0d653d6051ce0e19e1b7f9a8d8726be19eec75c9f052");
  ASSERT_TRUE(lists.LoadOrCreate(dir.Path(name)).Ok());
  EXPECT_EQ(lists.SubUrl(), PatternLists().SubUrl() + QStringList(QString()));
  const char* bytes = "before\r\n[file]\r\n a: x\ry \n\n[end]\r\nafter\r\n[file]\r\nb";
  ASSERT_TRUE(lists.LoadOrCreate(dir.Write("r.txt", bytes)).Ok());
  EXPECT_FALSE(lists.LoadOrCreate(dir.Path()).Ok()) << "a folder";
  EXPECT_TRUE(lists.SubUrl().isEmpty());
  EXPECT_EQ(lists.File(), QStringList({" a: x\ry ", QString(), "b"}));
  EXPECT_EQ(PatternLists::ExpressionOf(" a : (?:b) "), "(?:b)") << "cut at the first colon";
  EXPECT_EQ(PatternLists::ExpressionOf(" a "), " a ");
}

}  // namespace
}  // namespace zentorin
