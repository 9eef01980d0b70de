// SPDX-License-Identifier: MIT
#include "crawl/suffix_index.h"

#include <QRandomGenerator>
#include <QStringList>
#include <algorithm>

#include <gtest/gtest.h>

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
  const auto randomText = [&] {
    QString text;
    for (quint32 n = random.bounded(6U); n > 0; --n) {
      text += QStringLiteral("aAbBſ").at(static_cast<int>(random.bounded(5U)));
    }
    return text;
  };
  for (int round = 0; round < 200; ++round) {
    SuffixIndex index;
    QStringList seen;
    for (int i = 0; i < 40; ++i) {
      const QString question = randomText();
      const bool expected = std::any_of(seen.begin(), seen.end(), [&](const QString& text) {
        return text.endsWith(question, Qt::CaseInsensitive);
      });
      ASSERT_EQ(index.AnyEndsWith(question), expected) << question.toStdString();
      seen.append(randomText());
      index.Add(seen.last());
    }
  }
}

}  // namespace
}  // namespace zentorin
