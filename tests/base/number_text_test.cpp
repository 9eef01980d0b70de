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
  for (const auto& [text, value] :
       {Case("", 0),         Case("x", 0),     Case("3 days", 3),   Case(" -1.5e2", -150),
        Case("1 2\t3", 123), Case("+.5", 0.5), Case("5.", 5),       Case(".", 0),
        Case("-", 0),        Case("2e", 2),    Case("2e+x", 2),     Case("1.2.3", 1.2),
        Case("1,234", 1),    Case("１２", 0),  Case("1e999", kMax), Case("-1e999", -kMax),
        Case("1e-999", 0),   Case("nan", 0),   Case("inf", 0),      Case("0x10", 0)})
    EXPECT_EQ(NumericValue(QString(text)), value) << text;
}

TEST(NumberText, RoundsWholeNumbersHalfToEvenAndClampsThem) {
  constexpr int kMax = std::numeric_limits<int>::max();
  for (const auto& [text, value] :
       {std::pair(u"0.5", 0), std::pair(u"1.5", 2), std::pair(u"2.5", 2), std::pair(u"-0.5", 0),
        std::pair(u"-1.5", -2), std::pair(u"1e9", 1'000'000'000), std::pair(u"99999999999", kMax),
        std::pair(u"-1e300", -kMax - 1)}) {
    EXPECT_EQ(WholeNumber(text), value) << value;
  }
}

TEST(NumberText, GroupsDigitsInThrees) {
  EXPECT_EQ(GroupedNumber(0), "0");
  EXPECT_EQ(GroupedNumber(-999), "-999");
  EXPECT_EQ(GroupedNumber(-1000), "-1,000");
  EXPECT_EQ(GroupedNumber(1234567), "1,234,567");
  EXPECT_EQ(GroupedNumber(std::numeric_limits<qint64>::min()), "-9,223,372,036,854,775,808");
}

TEST(NumberText, TrimsAsciiBlanksOnly) {
  EXPECT_EQ(TrimBlanks("  \u3000\ta b  "), "\u3000\ta b");
  EXPECT_EQ(TrimBlanks("   "), QString());
  EXPECT_EQ(TrimLeadingBlanks("  a "), "a ");
}

}  // namespace
}  // namespace zentorin
