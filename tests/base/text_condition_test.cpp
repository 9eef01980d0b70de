// SPDX-License-Identifier: MIT
#include "base/text_condition.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

constexpr int kUnreadable = -1;

TEST(TextConditionTest, EveryOperatorDoesWhatItsTableSays) {
  const QHash<QString, QString> variables{{QStringLiteral("title"), QStringLiteral("確認")},
                                          {QStringLiteral("name"), QStringLiteral("VLC Player")},
                                          {QStringLiteral("size"), QStringLiteral("100")},
                                          {QStringLiteral("none"), QString()},
                                          {QStringLiteral("trap"), QStringLiteral("\" || 1 == 1")}};
  const std::vector<std::pair<const char*, int>> cases = {
      {"title == 確認", 1},
      {R"(title=="確認")", 1},
      {R"(title == "注意")", 0},
      {R"(title != "注意")", 1},
      {R"(name == "vlc player")", 0},
      {R"(name = "vlc player")", 1},
      {R"(name <> "vlc player")", 0},
      {R"(name ^ "PLAY")", 1},
      {"name ^ none", 1},
      {"none ^ x", 0},
      {"size < 9", 0},
      {"size >= 1e2", 1},
      {"size<=100", 1},
      {"size>100", 0},
      {"b > a", 1},
      {R"("10" < "9")", 0},
      {"10x < 9x", 1},
      {"title", 1},
      {"none", 0},
      {"0", 0},
      {"!none", 1},
      {"!!none", 0},
      {"!title == 注意", 1},
      {"!title != 注意", 0},
      {"1 || 0 && 0", 1},
      {"0 && 0 || 1", 1},
      {"0 && 1 || 0 && 1", 0},
      {"1 && !0 && 1", 1},
      {R"("a""b" == "a""b")", 1},
      {R"("a && b" ^ "&&")", 1},
      {"trap == x", 0},
      {"", kUnreadable},
      {"a b", kUnreadable},
      {"a ==", kUnreadable},
      {"== a", kUnreadable},
      {"a == b == c", kUnreadable},
      {"a &&", kUnreadable},
      {"|| a", kUnreadable},
      {"a & b", kUnreadable},
      {R"("open)", kUnreadable},
      {"!", kUnreadable},
      {"a ! b", kUnreadable},
  };
  for (const auto& [condition, expected] : cases) {
    const auto holds = EvaluateCondition(QString::fromUtf8(condition), variables);
    EXPECT_EQ(holds ? static_cast<int>(*holds) : kUnreadable, expected) << condition;
  }
}

TEST(TextConditionTest, ALongConditionIsReadWithoutNesting) {
  constexpr int kSigns = 1'000'000;
  EXPECT_EQ(EvaluateCondition(QString(kSigns, u'!') + QStringLiteral("1")), true);
  EXPECT_EQ(EvaluateCondition(QStringLiteral("0 || ").repeated(kSigns / 10) + u'1'), true);
}

}  // namespace
}  // namespace zentorin
