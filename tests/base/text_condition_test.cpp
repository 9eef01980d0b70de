// SPDX-License-Identifier: MIT
#include "base/text_condition.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

constexpr int kUnreadable = -1;

TEST(TextConditionTest, EveryOperatorDoesWhatItsTableSays) {
  const QHash<QString, QString> variables{{"title", "確認"},
                                          {"name", "VLC Player"},
                                          {"size", "100"},
                                          {"none", QString()},
                                          {"trap", "\" || 1 == 1"}};
  using Case = std::pair<const char*, int>;
  for (const auto& [condition, expected] : {Case("title == 確認", 1),
                                            Case(R"(title=="確認")", 1),
                                            Case(R"(title == "注意")", 0),
                                            Case(R"(title != "注意")", 1),
                                            Case(R"(name == "vlc player")", 0),
                                            Case(R"(name = "vlc player")", 1),
                                            Case(R"(name <> "vlc player")", 0),
                                            Case(R"(name ^ "PLAY")", 1),
                                            Case("name ^ none", 1),
                                            Case("none ^ x", 0),
                                            Case("size < 9", 0),
                                            Case("size >= 1e2", 1),
                                            Case("size<=100", 1),
                                            Case("size>100", 0),
                                            Case("b > a", 1),
                                            Case(R"("10" < "9")", 0),
                                            Case("10x < 9x", 1),
                                            Case("title", 1),
                                            Case("none", 0),
                                            Case("0", 0),
                                            Case("!none", 1),
                                            Case("!!none", 0),
                                            Case("!title == 注意", 1),
                                            Case("!title != 注意", 0),
                                            Case("1 || 0 && 0", 1),
                                            Case("0 && 0 || 1", 1),
                                            Case("0 && 1 || 0 && 1", 0),
                                            Case("1 && !0 && 1", 1),
                                            Case(R"("a""b" == "a""b")", 1),
                                            Case(R"("a && b" ^ "&&")", 1),
                                            Case("trap == x", 0),
                                            Case("", kUnreadable),
                                            Case("a b", kUnreadable),
                                            Case("a ==", kUnreadable),
                                            Case("== a", kUnreadable),
                                            Case("a == b == c", kUnreadable),
                                            Case("a &&", kUnreadable),
                                            Case("|| a", kUnreadable),
                                            Case("a & b", kUnreadable),
                                            Case(R"("open)", kUnreadable),
                                            Case("!", kUnreadable),
                                            Case("a ! b", kUnreadable)}) {
    const auto holds = EvaluateCondition(condition, variables);
    EXPECT_EQ(holds ? static_cast<int>(*holds) : kUnreadable, expected) << condition;
  }
}

TEST(TextConditionTest, ALongConditionIsReadWithoutNesting) {
  constexpr int kSigns = 1'000'000;
  EXPECT_EQ(EvaluateCondition(QString(kSigns, u'!') + "1"), true);
  EXPECT_EQ(EvaluateCondition(QStringLiteral("0 || ").repeated(kSigns / 10) + u'1'), true);
}

}  // namespace
}  // namespace zentorin
