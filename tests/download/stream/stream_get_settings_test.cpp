// SPDX-License-Identifier: MIT
#include "download/stream/stream_get_settings.h"

#include <gtest/gtest.h>

#include "tests/support/temp_dir.h"

namespace zentorin::test {
namespace {

TEST(StreamGetSettingsTest, TheFileIsWrittenToTheByteAndOldStreamsAreForgotten) {
  const TempDir tool;
  tool.Write("Inf/old.INI", "x");
  tool.Write("Inf/kept.txt", "x");
  const StreamGetRecording recording{.address = "mms://m.test/a\r\nASFPLAY=9.wmv",
                                     .folder = "/home/保存"};
  ASSERT_TRUE(WriteStreamGetSettings(tool.Path(), recording).Ok());
  EXPECT_EQ(tool.Read("StreamGet.ini"),
            "[Option]\r\nSavePath=Z:\\home\\\x95\xdb\x91\xb6\r\n[ASF]\r\n"
            "ASFURL01=mms://m.test/aASFPLAY=9.wmv\r\n[Position]\r\nMAIN=66,66,578,469\r\n"
            "DelayPlayMode=0\r\nManualInputMode = 0\r\nProtocolDetailMode = 0\r\n"
            "ProtocolDispMode = 1\r\nReserveEditMode = 0\r\nReserveMode = 0\r\nLASTPLAY=\r\n"
            "TimeSetURL02=https://www.nict.go.jp/JST/JST5.html\r\nGASVersion=Ver 2.1.0.8c\r\n"
            "ASFPLAY=\r\n");
  EXPECT_TRUE(tool.Read("Inf/old.INI").isNull());
  EXPECT_EQ(tool.Read("Inf/kept.txt"), "x");
}

TEST(StreamGetSettingsTest, ATextThatTheCodePageLacksIsRefusedByName) {
  const TempDir tool;
  const FileOutcome outcome =
      WriteStreamGetSettings(tool.Path(), {.address = "mms://m.test/a", .folder = "/home/😀"});
  EXPECT_TRUE(outcome.message.contains("😀"));
  EXPECT_TRUE(tool.Read("StreamGet.ini").isNull());
}

TEST(StreamGetSettingsTest, TheProgressIsReadFromItsLine) {
  const TempDir tool;
  EXPECT_EQ(StreamGetPlayed(tool.Path()), QString());
  tool.Write("StreamGet.ini", "[Option]\r\nASFPLAY=\r\n");
  EXPECT_EQ(StreamGetPlayed(tool.Path()), QString());
  tool.Write("StreamGet.ini", "[Option]\r\nASFPLAY=45%\r\nX=1\r\n");
  EXPECT_EQ(StreamGetPlayed(tool.Path()), "45%");
}

}  // namespace
}  // namespace zentorin::test
