// SPDX-License-Identifier: MIT
#include "base/ansi_text.h"

#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(AnsiText, DecodesTheCodePageAndMarksEveryByteThatIsNoCharacter) {
  ASSERT_TRUE(AnsiCodecAvailable());
  using Case = std::tuple<QByteArray, QString>;
  for (const auto& [bytes, text] :
       {Case(QByteArray("\x81\x60\x87\x40\xb1\x5c\x7e"), "～①ｱ\\~"),
        Case(QByteArray("\xf0\x40\xfa\xb1"), "\uE000﨑"),
        Case(QByteArray("\0\x01\x1a\x7f", 4), QString::fromUtf8("\0\x01\x1a\x7f", 4)),
        Case(QByteArray("\x80\xa0\xfd\xff"), "\uFFFD\uFFFD\uFFFD\uFFFD"),
        Case(QByteArray("a\x82"), "a\uFFFD"),
        Case(QByteArray("\x82\x0a\x82\x82\x82"), "\uFFFD\nｂ\uFFFD"),
        Case(QByteArray("\x81\xff\x40"), "\uFFFD\uFFFD@"), Case(QByteArray(), QString())})
    EXPECT_EQ(DecodeAnsi(bytes), text) << bytes.toHex().constData();
}

// Every text that is accepted comes back unchanged, and what cannot be kept is refused.
TEST(AnsiText, EncodesExactlyOrNotAtAll) {
  int accepted = 0;
  for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const QString text = u"あ"_s + QChar(static_cast<char16_t>(unit));
    const AnsiBytes ansi = EncodeAnsi(text);
    if (!ansi.fault) {
      ++accepted;
      EXPECT_EQ(DecodeAnsi(ansi.bytes), text) << "U+" << std::hex << static_cast<int>(unit);
    }
  }
  EXPECT_EQ(accepted, 128 + 63 + 9206);  // ASCII, half-width katakana, characters of two bytes
  EXPECT_EQ(EncodeAnsi(u"～①ｱ∪").bytes, QByteArray("\x81\x60\x87\x40\xb1\x81\xbe"));
}

TEST(AnsiText, NamesTheFirstCharacterThatCannotBeKept) {
  using Case = std::tuple<QString, qsizetype, QString>;
  for (const auto& [text, position, character] :
       {Case("a¥b", 1, "¥"), Case("日本〜😀", 2, "〜"), Case("日本😀€", 2, "😀"),
        Case(QString(QChar(0xD83D)), 0, QString(QChar(0xD83D))),
        Case(QString(QChar(0xDE00)) + u'a', 0, QString(QChar(0xDE00))),
        Case("\uFFFD", 0, "\uFFFD")}) {
    const AnsiBytes ansi = EncodeAnsi(text);
    const UnencodableCharacter fault = ansi.fault.value_or(UnencodableCharacter{});
    EXPECT_TRUE(ansi.bytes.isEmpty());
    EXPECT_EQ(fault.position, position) << text.toStdString();
    EXPECT_EQ(fault.character, character) << text.toStdString();
  }
}

TEST(AnsiText, SplitsLinesAtCrLfAndLf) {
  EXPECT_EQ(SplitLines(QString()), QStringList());
  EXPECT_EQ(SplitLines("\r\n"), QStringList({QString()}));
  EXPECT_EQ(SplitLines("a\r\n\nb\rc\r\r\nd"), QStringList({"a", QString(), "b\rc\r", "d"}));
}

}  // namespace
}  // namespace zentorin
