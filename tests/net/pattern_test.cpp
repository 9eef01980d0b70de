// SPDX-License-Identifier: MIT
#include "net/pattern.h"

#include <gtest/gtest.h>

namespace zentorin {
namespace {

QStringList Found(const QString& expression, const QString& text) {
  return Pattern(expression).Candidates(text);
}

TEST(Pattern, GivesTheFirstGroupOfEveryMatchOrTheWholeMatch) {
  EXPECT_EQ(Found("href=\"(.+?)\"", "<a HREF=\"a.htm\" href=\"b.htm\">"),
            QStringList({"a.htm", "b.htm"}));
  EXPECT_EQ(Found("[a-z]+\\.mp3", "A.MP3 b.mp3"), QStringList({"A.MP3", "b.mp3"}));
  EXPECT_EQ(Found("a(b)?(c)", "ac abc"), QStringList({"", "b"}));
  EXPECT_EQ(Found("^(\\w)", "ab\ncd"), QStringList({"a", "c"}));
  // An empty match moves on by one character.
  EXPECT_EQ(Found("b*", "abb"), QStringList({"", "bb", ""}));
  EXPECT_EQ(Found("(?=.)", "a𠮷b"), QStringList({"", "", ""}));
}

TEST(Pattern, LongTextsGiveTheSameMatchesAsShortOnes) {
  const QString filler(10'000, u'-');
  EXPECT_EQ(Found("(?<=b)a+|x*?", "baa𠮷"), QStringList({"", "aa", "", ""}));
  EXPECT_EQ(Found("(?<=b)(a+)", filler + "baa aa ba" + filler), QStringList({"aa", "a"}));
  EXPECT_EQ(Found("end", QString(Pattern::kMaxTextLength, u'-') + "end"), QStringList());
}

TEST(Pattern, AFaultNamesTheExpressionAndThePlace) {
  const Pattern pattern("a(b");
  EXPECT_FALSE(pattern.IsValid());
  EXPECT_TRUE(pattern.Fault().startsWith("正規表現「a(b」に誤りがあります（4 文字目"))
      << pattern.Fault().toStdString();
  EXPECT_TRUE(Found("a(b", "ab").isEmpty());
  EXPECT_EQ(Pattern("a").Fault(), u"");
}

TEST(Pattern, NeitherHalfASurrogatePairNorADeepExpressionIsARunaway) {
  Pattern deep("^((a|b)(a|b))*$");
  EXPECT_EQ(deep.Candidates(QString(50'000, u'a')).size(), 1);
  EXPECT_EQ(deep.Fault(), u"");
  Pattern pattern("b+");
  EXPECT_EQ(pattern.Candidates(QChar(0xD800) + QString("bb") + QChar(0xDC00)), QStringList({"bb"}));
  EXPECT_EQ(pattern.First(QChar(0xDC00) + QString("b")), u"b");
  EXPECT_EQ(pattern.Fault(), u"");
}

// Each of these costs minutes or more without the bound.
TEST(Pattern, ARunawayIsStoppedAndReportedAndGivesUpAfterSome) {
  using Case = std::pair<const char*, qsizetype>;
  for (const auto& [expression, length] :
       {Case("(a+)+$", 50'000), Case("(a+)+$", 500), Case("(?:q?a.*){4}[x-z]", 60'000)}) {
    Pattern pattern(expression);
    const QString text = QString(length, u'a') + u'b';
    for (int i = 0; i < Pattern::kMaxRunaways; ++i) {
      EXPECT_FALSE(pattern.GaveUp());
      EXPECT_TRUE(pattern.Candidates(text).isEmpty());
      EXPECT_TRUE(pattern.Fault().contains(expression));
    }
    EXPECT_TRUE(pattern.GaveUp()) << expression;
    EXPECT_TRUE(pattern.Candidates(u"a").isEmpty());
  }
}

}  // namespace
}  // namespace zentorin
