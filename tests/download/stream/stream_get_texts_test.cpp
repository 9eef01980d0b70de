// SPDX-License-Identifier: MIT
#include <optional>

#include <gtest/gtest.h>

#include "download/stream/stream_get_settings.h"
#include "download/stream/text_condition.h"
#include "tests/support/temp_dir.h"

namespace zentorin {
namespace {

TEST(StreamGetSettings, AreWrittenToTheByteOrRefusedAndTellTheProgress) {
  const test::TempDir tool;
  const QString name = "StreamGet.ini";
  const Outcome refused =
      WriteStreamGetSettings(tool.Path(), {.address = "mms://m.test/a", .folder = "/home/😀"});
  EXPECT_TRUE(refused.message.contains("😀"));
  EXPECT_TRUE(tool.Read(name).isNull());
  EXPECT_EQ(StreamGetPlayed(tool.Path()), QString());
  tool.Write("Inf/old.INI", "x");
  tool.Write("Inf/kept.txt", "x");
  const StreamGetRecording recording{.address = "mms://m.test/a\r\nASFPLAY=9.wmv",
                                     .folder = "/home/保存"};
  ASSERT_TRUE(WriteStreamGetSettings(tool.Path(), recording).Ok());
  EXPECT_EQ(tool.Read(name),
            "[Option]\r\nSavePath=Z:\\home\\\x95\xdb\x91\xb6\r\n[ASF]\r\n"
            "ASFURL01=mms://m.test/aASFPLAY=9.wmv\r\n[Position]\r\nMAIN=66,66,578,469\r\n"
            "DelayPlayMode=0\r\nManualInputMode = 0\r\nProtocolDetailMode = 0\r\n"
            "ProtocolDispMode = 1\r\nReserveEditMode = 0\r\nReserveMode = 0\r\nLASTPLAY=\r\n"
            "TimeSetURL02=https://www.nict.go.jp/JST/JST5.html\r\nGASVersion=Ver 2.1.0.8c\r\n"
            "ASFPLAY=\r\n");
  EXPECT_TRUE(tool.Read("Inf/old.INI").isNull()) << "old streams are forgotten";
  EXPECT_EQ(tool.Read("Inf/kept.txt"), "x");
  EXPECT_EQ(StreamGetPlayed(tool.Path()), QString());
  tool.Write(name, "[Option]\r\nASFPLAY=45%\r\nX=1\r\n");
  EXPECT_EQ(StreamGetPlayed(tool.Path()), "45%");
}

TEST(TextCondition, EveryOperatorDoesWhatItsTableSaysAtAnyLength) {
  const QHash<QString, QString> variables{{"title", "確認"},
                                          {"name", "VLC Player"},
                                          {"size", "100"},
                                          {"none", QString()},
                                          {"trap", "\" || 1 == 1"}};
  for (const char* holds :
       {"title == 確認", R"(title=="確認")", R"(title != "注意")", R"(name = "vlc player")",
        R"(name ^ "PLAY")", "name ^ none", "size >= +100.0", "size<=100", "1e1 < 9", "inf > 9",
        "nan > 5", "9 < nan", R"("(a" == "(a")", "b > a", "10x < 9x", R"("a""b" == "a""b")",
        R"("a && b" ^ "&&")"}) {
    EXPECT_EQ(EvaluateCondition(holds, variables), true) << holds;
  }
  for (const char* fails :
       {R"(title == "注意")", R"(name == "vlc player")", R"(name <> "vlc player")", "none ^ x",
        "size < 9", "size>100", R"("10" < "9")", "trap == x"}) {
    EXPECT_EQ(EvaluateCondition(fails, variables), false) << fails;
  }
  using Case = std::pair<const char*, bool>;
  for (const auto& [joined, result] :
       {Case("title", true), Case("!none", true), Case("!title == 注意", true),
        Case("1 || 0 && 0", true), Case("0 && 0 || 1", true), Case("1 && !0 && 1", true),
        Case("none", false), Case("0", false), Case("!!none", false), Case("!title != 注意", false),
        Case("0 && 1 || 0 && 1", false)}) {
    EXPECT_EQ(EvaluateCondition(joined, variables), result) << joined;
  }
  for (const char* unreadable : {"", "a b", "a ==", "== a", "a == b == c", "a &&", "|| a", "a & b",
                                 R"("open)", "!", "a ! b", "(a = a)", "a(1) = b"}) {
    EXPECT_EQ(EvaluateCondition(unreadable, variables), std::nullopt) << unreadable;
  }
  // A long one is read without nesting.
  constexpr int kSigns = 1'000'000;
  EXPECT_EQ(EvaluateCondition(QString(kSigns, u'!') + "1"), true);
  EXPECT_EQ(EvaluateCondition(QString("0 || ").repeated(kSigns / 10) + u'1'), true);
}

}  // namespace
}  // namespace zentorin
