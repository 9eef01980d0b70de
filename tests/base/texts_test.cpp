// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "base/ansi_text.h"
#include "base/number_text.h"

namespace zentorin {
namespace {

TEST(AnsiText, DecodesTheCodePageAndMarksEveryByteThatIsNoCharacter) {
  ASSERT_TRUE(AnsiCodecAvailable());
  using Case = std::tuple<QByteArray, QString>;
  for (const auto& [bytes, text] :
       {Case("\x81\x60\x87\x40\xb1\x5c\x7e", "～①ｱ\\~"),
        Case("\x80\xa0\xfd\xff", "\uFFFD\uFFFD\uFFFD\uFFFD"),
        Case("\x82\x0a\x82\x82\x82", "\uFFFD\nｂ\uFFFD"), Case("\x81\xff\x40", "\uFFFD\uFFFD@")}) {
    EXPECT_EQ(DecodeAnsi(bytes), text) << bytes.toHex().constData();
  }
}

// Every text that is accepted comes back unchanged, and what cannot be kept is refused.
TEST(AnsiText, EncodesExactlyOrNotAtAll) {
  int accepted = 0;
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const QString text = QString("あ") + QChar(static_cast<char16_t>(unit));
    const AnsiBytes ansi = EncodeAnsi(text);
    if (!ansi.fault) {
      ++accepted;
      EXPECT_EQ(DecodeAnsi(ansi.bytes), text) << "U+" << std::hex << static_cast<int>(unit);
    }
  }
  EXPECT_EQ(accepted, 128 + 63 + 9206);  // ASCII, half-width katakana, characters of two bytes
  const UnencodableCharacter fault = EncodeAnsi(u"日本😀€").fault.value_or(UnencodableCharacter{});
  EXPECT_TRUE(fault.position == 2 && fault.character == "😀") << fault.position;
}

TEST(NumberText, TakesTheNumberAtTheStartOfAnyText) {
  constexpr double kMax = std::numeric_limits<double>::max();
  using Case = std::tuple<const char*, double>;
  for (const auto& [text, value] :
       {Case("x", 0), Case(" -1.5e2", -150), Case("1 2\t3 days", 123), Case("+.5", 0.5),
        Case(".", 0), Case("2e+x", 2), Case("1.2.3", 1.2), Case("１２", 0), Case("-1e999", -kMax),
        Case("inf", 0)}) {
    EXPECT_EQ(NumericValue(QString(text)), value) << text;
  }
  EXPECT_EQ(WholeNumber(u"1.5"), 2);
  EXPECT_EQ(WholeNumber(u"2.5"), 2);
  EXPECT_EQ(WholeNumber(u"99999999999"), std::numeric_limits<int>::max());
}

TEST(NumberText, GroupsDigitsAndTrimsAsciiBlanksOnly) {
  EXPECT_EQ(GroupedNumber(0) + GroupedNumber(-999) + GroupedNumber(-1234567), "0-999-1,234,567");
  EXPECT_EQ(TrimBlanks("  \u3000\ta b  "), "\u3000\ta b");
}

}  // namespace
}  // namespace zentorin
