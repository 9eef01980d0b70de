// SPDX-License-Identifier: MIT
#include "jobs/log_file.h"

#include <QFile>

#include <gtest/gtest.h>

#include "base/clock.h"
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
  LogFile inNoFolder(dir.Path("none/log.txt"), clock);
  LogFile aFolder(dir.Path(), clock);
  LogFile full("/dev/full", clock);
  for (LogFile* log : {&inNoFolder, &aFolder, &full}) {
    for (const bool startNew : {false, true}) {
      const FileOutcome outcome = log->Append("x", startNew);
      EXPECT_FALSE(outcome.Ok()) << log->Path().toStdString();
      EXPECT_TRUE(outcome.message.contains(log->Path())) << outcome.message.toStdString();
    }
    EXPECT_FALSE(log->WasWritten());
  }
  EXPECT_FALSE(inNoFolder.Exists());
  EXPECT_TRUE(inNoFolder.Sync().Ok()) << "nothing is there to make durable";
}

}  // namespace
}  // namespace zentorin
