// SPDX-License-Identifier: MIT
#include "crawl/suffix_index.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/random_text.h"

namespace zentorin {
namespace {

TEST(SuffixIndex, FindsAnEndingWithoutRegardToCase) {
  SuffixIndex index;
  EXPECT_FALSE(index.AnyEndsWith(u"")) << "nothing was seen yet";
  index.Add(u"");
  EXPECT_TRUE(index.AnyEndsWith(u""));
  EXPECT_FALSE(index.AnyEndsWith(u"a"));
  index.Add(u"http://h/d/Ａ.MP3");
  EXPECT_TRUE(index.AnyEndsWith(u"D/ａ.mp3"));
  EXPECT_FALSE(index.AnyEndsWith(u"xhttp://h/d/Ａ.MP3")) << "longer than what was seen";
  EXPECT_FALSE(index.AnyEndsWith(u"http://h/d")) << "a beginning";
}

TEST(SuffixIndex, AnswersAsAWalkOverAllTextsWould) {
  QRandomGenerator random(3);
  const QStringList letters = {"a", "A", "b", "B", "ſ"};
  for (int round = 0; round < 200; ++round) {
    SuffixIndex index;
    QStringList seen;
    for (int i = 0; i < 40; ++i) {
      const QString question = test::RandomText(random, letters, 5);
      const bool expected = std::ranges::any_of(
          seen, [&](const QString& text) { return text.endsWith(question, Qt::CaseInsensitive); });
      ASSERT_EQ(index.AnyEndsWith(question), expected) << question.toStdString();
      seen.append(test::RandomText(random, letters, 5));
      index.Add(seen.last());
    }
  }
}

}  // namespace
}  // namespace zentorin
