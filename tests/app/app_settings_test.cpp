// SPDX-License-Identifier: MIT
#include "app/app_settings.h"

#include <gtest/gtest.h>

#include "base/ansi_text.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(AppSettings, AreWrittenInTheirOrderToTheByteOrNotAtAll) {
  const TempDir dir;
  AppSettings settings;
  const QString path = dir.Path("Conf.txt");
  ASSERT_TRUE(settings.Load(path).Ok()) << "a missing file is no error";
  ASSERT_TRUE(settings.Save(path).Ok());
  settings.defaultSavePath = "/保存/\U0001F600";
  const QString fault = settings.Save(path).message;
  EXPECT_TRUE(fault.contains("default save path") && fault.contains("\U0001F600"));
  EXPECT_EQ(dir.Read("Conf.txt"),
            "form left = 130\r\nform top = 100\r\nform right = 812\r\nform bottom = 700\r\n"
            "default save path = \r\nopen folder = 1\r\nvlc show = 0\r\nGMT use = 0\r\n"
            "GMT diff = 9\r\nvlc wma to mp3 = 1\r\nstreaming tool = 0\r\nauto close = 0\r\n"
            "add date = 0\r\nadd date format = yyyymmddhh_\r\n");
}

TEST(AppSettings, ReadKeysInAnyLetterCaseAndSkipWhatIsNoSetting) {
  const TempDir dir;
  const QString text =
      u"  Form Left = 7\r\nform top = x\nFORM RIGHT =   900 px\r\nform bottom = 1 = 2\r\n"
      "default save path =   保存 先 \r\nopen folder = 0\r\nunknown = 1\r\nno setting\r\n\r\n"
      "vlc show = 1\r\nGMT use = 1\r\ngmt use = 1\r\nGMT diff = 3\r\nvlc wma to mp3 = no\r\n"
      "streaming tool = 99999999999999999999\r\nauto close = 1\r\nadd date = 1\r\n"
      "add date format = yyyy-\r\nform top=5\r\n"_s;
  AppSettings settings;
  settings.formTop = 1;
  settings.clock.gmtDiffHours = -5;
  ASSERT_TRUE(settings.Load(dir.Write("Conf.txt", EncodeAnsi(text).bytes)).Ok());
  ASSERT_TRUE(settings.Save(dir.Path("again.txt")).Ok());
  const QString again =
      u"form left = 7\r\nform top = 0\r\nform right = 900\r\nform bottom = 700\r\n"
      "default save path = 保存 先 \r\nopen folder = 0\r\nvlc show = 1\r\nGMT use = 0\r\n"
      "GMT diff = 9\r\nvlc wma to mp3 = 0\r\nstreaming tool = 2147483647\r\nauto close = 1\r\n"
      "add date = 1\r\nadd date format = yyyy-\r\n"_s;
  EXPECT_EQ(DecodeAnsi(dir.Read("again.txt")), again)
      << "a value with the separator is skipped, and the clock's lines are never read back";
}

}  // namespace
}  // namespace zentorin::test
