// SPDX-License-Identifier: MIT
#include "download/stream/text_condition.h"

#include <optional>

#include <gtest/gtest.h>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(TextConditionTest, EveryOperatorDoesWhatItsTableSays) {
  const QHash<QString, QString> variables{{"title", "確認"},
                                          {"name", "VLC Player"},
                                          {"size", "100"},
                                          {"none", QString()},
                                          {"trap", "\" || 1 == 1"}};
  for (const char* holds : {"title == 確認",
                            R"(title=="確認")",
                            R"(title != "注意")",
                            R"(name = "vlc player")",
                            R"(name ^ "PLAY")",
                            "name ^ none",
                            "size >= +100.0",
                            "size<=100",
                            "1e1 < 9",
                            "inf > 9",
                            "nan > 5",
                            "9 < nan",
                            R"("(a" == "(a")",
                            "b > a",
                            "10x < 9x",
                            "title",
                            "!none",
                            "!title == 注意",
                            "1 || 0 && 0",
                            "0 && 0 || 1",
                            "1 && !0 && 1",
                            R"("a""b" == "a""b")",
                            R"("a && b" ^ "&&")"}) {
    EXPECT_EQ(EvaluateCondition(holds, variables), true) << holds;
  }
  for (const char* fails :
       {R"(title == "注意")", R"(name == "vlc player")", R"(name <> "vlc player")", "none ^ x",
        "size < 9", "size>100", R"("10" < "9")", "none", "0", "!!none", "!title != 注意",
        "0 && 1 || 0 && 1", "trap == x"}) {
    EXPECT_EQ(EvaluateCondition(fails, variables), false) << fails;
  }
  for (const char* unreadable : {"", "a b", "a ==", "== a", "a == b == c", "a &&", "|| a", "a & b",
                                 R"("open)", "!", "a ! b", "(a = a)", "a(1) = b"}) {
    EXPECT_EQ(EvaluateCondition(unreadable, variables), std::nullopt) << unreadable;
  }
}

TEST(TextConditionTest, ALongConditionIsReadWithoutNesting) {
  constexpr int kSigns = 1'000'000;
  EXPECT_EQ(EvaluateCondition(QString(kSigns, u'!') + "1"), true);
  EXPECT_EQ(EvaluateCondition(u"0 || "_s.repeated(kSigns / 10) + u'1'), true);
}

}  // namespace
}  // namespace zentorin
