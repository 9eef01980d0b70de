// SPDX-License-Identifier: MIT
#include "base/number_text.h"

#include <limits>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {
namespace {

TEST(NumberText, TakesTheNumberAtTheStartOfAnyText) {
  constexpr double kMax = std::numeric_limits<double>::max();
  using Case = std::tuple<const char*, double>;
  const std::vector<Case> cases = {
      {"", 0},           {"x", 0},       {"3 days", 3}, {" -1.5e2", -150}, {"1 2\t3", 123},
      {"+.5", 0.5},      {"5.", 5},      {".", 0},      {"-", 0},          {"2e", 2},
      {"2e+x", 2},       {"1.2.3", 1.2}, {"1,234", 1},  {"１２", 0},       {"1e999", kMax},
      {"-1e999", -kMax}, {"1e-999", 0},  {"nan", 0},    {"inf", 0},        {"0x10", 0},
  };
  for (const auto& [text, value] : cases)
    EXPECT_EQ(NumericValue(QString::fromUtf8(text)), value) << text;
}

TEST(NumberText, RoundsWholeNumbersHalfToEvenAndClampsThem) {
  using Case = std::tuple<const char*, int>;
  const std::vector<Case> cases = {
      {"0.5", 0},
      {"1.5", 2},
      {"2.5", 2},
      {"-0.5", 0},
      {"-1.5", -2},
      {"1e9", 1'000'000'000},
      {"99999999999", std::numeric_limits<int>::max()},
      {"-1e300", std::numeric_limits<int>::min()},
  };
  for (const auto& [text, value] : cases)
    EXPECT_EQ(WholeNumber(QString::fromUtf8(text)), value) << text;
}

TEST(NumberText, GroupsDigitsInThrees) {
  EXPECT_EQ(GroupedNumber(0), QStringLiteral("0"));
  EXPECT_EQ(GroupedNumber(-999), QStringLiteral("-999"));
  EXPECT_EQ(GroupedNumber(-1000), QStringLiteral("-1,000"));
  EXPECT_EQ(GroupedNumber(1234567), QStringLiteral("1,234,567"));
  EXPECT_EQ(GroupedNumber(std::numeric_limits<qint64>::min()),
            QStringLiteral("-9,223,372,036,854,775,808"));
}

TEST(NumberText, TrimsAsciiBlanksOnly) {
  EXPECT_EQ(TrimBlanks(QStringLiteral("  \u3000\ta b  ")), QStringLiteral("\u3000\ta b"));
  EXPECT_EQ(TrimBlanks(QStringLiteral("   ")), QString());
  EXPECT_EQ(TrimLeadingBlanks(QStringLiteral("  a ")), QStringLiteral("a "));
}

}  // namespace
}  // namespace zentorin
