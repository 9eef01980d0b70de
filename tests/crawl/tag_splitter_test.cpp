// SPDX-License-Identifier: MIT
#include "crawl/tag_splitter.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include "tests/support/random_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList Tags(const QString& page) {
  QStringList tags;
  TagSplitter splitter(page);
  for (QStringView tag = splitter.Next(); !tag.isNull(); tag = splitter.Next()) {
    tags.append(tag.toString());
  }
  EXPECT_EQ(TagSplitter::CountTags(page), tags.size());
  return tags;
}

TEST(TagSplitter, SplitsAPageIntoItsTags) {
  EXPECT_EQ(Tags("x<a href=1>y</a>\n<b\n>"), QStringList({"<a href=1>", "</a>", "<b\n>"}));
  EXPECT_EQ(Tags("<>>"), QStringList({"<>>"}));
  EXPECT_EQ(Tags("<<>"), QStringList({"<<>"}));
  EXPECT_EQ(Tags("<a\\>b>"), QStringList());
  EXPECT_EQ(Tags("<>a>"), QStringList());
}

TEST(TagSplitter, EqualsTheExpressionThatItStandsFor) {
  const QRegularExpression expression(
      "\\<([^<>]*?)[^\\\\]\\>",
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
  const QStringList alphabet = {"<", "<", ">", ">", "\\", "a", "\n"};
  QRandomGenerator random(11);
  for (int i = 0; i < 50'000; ++i) {
    const QString page = test::RandomText(random, alphabet, 13);
    QStringList expected;
    for (auto matches = expression.globalMatch(page); matches.hasNext();) {
      expected.append(matches.next().captured());
    }
    ASSERT_EQ(Tags(page), expected) << page.toStdString();
  }
}

TEST(TagSplitter, HostilePagesCostTimeInProportion) {
  const qsizetype many = 25'000'000;
  EXPECT_EQ(TagSplitter::CountTags(QString(many, u'<')), 0);
  EXPECT_EQ(TagSplitter::CountTags(u'<' + QString(many, u'x') + u'>'), 1);
  EXPECT_EQ(TagSplitter::CountTags(u"<\\"_s.repeated(many / 2)), 0);
}

}  // namespace
}  // namespace zentorin
