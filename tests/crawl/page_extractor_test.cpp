// SPDX-License-Identifier: MIT
#include "crawl/page_extractor.h"

#include <QRegularExpression>
#include <algorithm>

#include "crawl/suffix_index.h"
#include "crawl/tag_splitter.h"
#include "tests/crawl/crawl_fixture.h"
#include "tests/support/random_text.h"

namespace zentorin::test {
namespace {

// The files of one page.
class Extractor : public CrawlTest {
 protected:
  Extractor() { Set(TargetUrlItem::SubPattern, ""); }

  void Html(const char* html) { server.Route("/", Answer::Text(html)); }
  void File(const char* target, int bytes, const QByteArray& lastModified) {
    const Answer answer = Answer::Text(QByteArray(bytes, 'x'));
    server.Route(target,
                 lastModified.isEmpty() ? answer : answer.With("Last-Modified", lastModified));
  }
};

TEST_F(Extractor, ReadsKeywordsAsFixedExpressions) {
  Html(R"(<a href="a.mp3"><a href="b.pdf"><img src="c.gif"><IMG SRC=d.GIF alt=x>)"
       R"(<img alt=x src="e.gif"><a url="f.MP3"><img src="g.jpeg">)");
  for (const auto& [pattern, links] :
       {std::pair(".PDF", "a.mp3 f.MP3"), std::pair(".mp3", "a.mp3 f.MP3"),
        std::pair(".gif", "c.gif d.GIF"), std::pair(".JPEG", "g.jpeg"), std::pair(".png", "")}) {
    Set(TargetUrlItem::FilePattern, pattern);
    Generate();
    EXPECT_EQ(Links(), links) << pattern;
    EXPECT_EQ(Column(FileListRow::Address).remove("~/"), links) << pattern;
  }
}

TEST_F(Extractor, AnAddressIsTheLinkWithoutReferencesAgainstTheBaseOfThePage) {
  using Case = std::tuple<const char*, const char*, const char*>;  // base element, column 4, 6
  for (const auto& [base, directory, address] :
       {Case("", "~/d", "~/d/f?a=1&b=é.mp3"), Case("http://o.test/e/x.html", "http://o.test/e", ""),
        Case("http://o.test", "http://o.test", ""), Case("../e/", "~/e", "~/e/f?a=1&b=é.mp3"),
        Case("/e&amp;g/i.html?u=http://x", "~/e&g", ""), Case("//o.test/", "http://o.test", ""),
        Case("#x", "~/d", "")}) {
    const QByteArray element = *base == 0 ? "" : QByteArray("<base href=\"") + base + "\">";
    server.Route("/", Answer::Redirect("http://h.test/d/"));
    server.Route("/d/", Answer::Text(element + "<a href=\"f?a=1&amp;b=&#xE9;.mp3\">"));
    Generate();
    EXPECT_EQ(Links(), "f?a=1&amp;b=&#xE9;.mp3") << "as written";
    EXPECT_EQ(Column(FileListRow::BaseDir), directory) << base;
    EXPECT_TRUE(*address == 0 || Column(FileListRow::Address) == address) << base;
    EXPECT_EQ(FileAddressOf(files.Row(0)), files.Row(0)[FileListRow::Address]) << base;
  }
}

TEST_F(Extractor, TakesTheLinkOutOfWhatTheExpressionCaught) {
  Set(TargetUrlItem::FilePattern, R"re((?:<guid>|\w+=)[^>]*?\.mp3)re");
  Html(R"(<base href="http://o.test/d/"><a HREF=a.mp3><x url=  b.mp3 ><y href="c.mp3">)"
       R"(<z href=url=d\e.mp3><i foo=f.mp3>)");
  Generate();
  EXPECT_EQ(Links(), "a.mp3 b.mp3 c.mp3 de.mp3 foo=f.mp3 de.mp3")
      << "a link with a backslash is not met again under its stored form";
  EXPECT_EQ(Rows().section('\n', 0, 0), "|-|     -|a.mp3|http://o.test/d|~/|http://o.test/d/a.mp3");
}

TEST_F(Extractor, ListsALinkOnceWhereverItStands) {
  Page("/", "x/a.mp3 A.MP3 b.mp3 b.mp3 p.html");
  Page("/p.html", "b.mp3 xb.mp3 c.mp3");
  Set(TargetUrlItem::SubPattern, R"re(href="(.+?\.html)")re");
  Generate();
  EXPECT_EQ(Links(), "x/a.mp3 b.mp3 xb.mp3 c.mp3")
      << "a link that a listed one ends with counts as listed";
}

TEST_F(Extractor, AsksForDateAndSizeAndKeepsFilesInsideTheDateWindow) {
  Check(TargetUrlItem::DispModify);
  Page("/", "a.mp3 b.mp3 c.mp3 d.mp3 e.mp3");
  // The clock shows 2024/05/01 23:30:05, nine hours ahead of GMT.
  File("/a.mp3", 1001, "Wed, 01 May 2024 02:30:05 GMT");
  File("/b.mp3", 1'234'000, "Wed, 01 May 2024 02:30:04 GMT");
  File("/c.mp3", 1000, "yesterday");
  File("/d.mp3", 1, "Mon, 01 Jan 1990 00:00:00 GMT");
  Answer unknown = Answer::Text("x").Ends(Answer::Ending::Close);
  unknown.contentLength = "";
  server.Route("/e.mp3", unknown);
  Generate();
  EXPECT_EQ(Rows(),
            "|2024/05/01 11:30:05|     2|a.mp3|~|~/|~/a.mp3\n"
            "|2024/05/01 11:30:04| 1,234|b.mp3|~|~/|~/b.mp3\n"
            "|-|     1|c.mp3|~|~/|~/c.mp3\n"
            "|1990/01/01 09:00:00|     1|d.mp3|~|~/|~/d.mp3\n"
            "|-|     -|e.mp3|~|~/|~/e.mp3");
  EXPECT_EQ(server.Hits("/a.mp3"), 1) << "one request for both";
  Check(TargetUrlItem::Modify);
  const char* const all = "a.mp3 b.mp3 c.mp3 d.mp3 e.mp3";
  for (const auto& [days, links] :
       {std::pair("0.5", "a.mp3 c.mp3 e.mp3"), std::pair("  1", "a.mp3 b.mp3 c.mp3 e.mp3"),
        std::pair("", all), std::pair("9e99", all)}) {
    Set(TargetUrlItem::Date, days);
    Generate();
    EXPECT_EQ(Links(), links) << "days: " << days;
  }
  workspace.settings.clock.useGmt = true;
  Generate();
  EXPECT_EQ(files.Row(0)[FileListRow::Date], "2024/05/01 02:30:05");
}

TEST(SuffixIndex, AnswersAsAWalkOverAllTextsWould) {
  QRandomGenerator random(3);
  const QStringList letters = {"a", "A", "b", "B", "ſ", "Ａ", "ａ"};
  for (int round = 0; round < 400; ++round) {
    SuffixIndex index;
    QStringList seen;
    for (int i = 0; i < 40; ++i) {
      const QString question = RandomText(random, letters, 5);
      const bool expected = std::ranges::any_of(
          seen, [&](const QString& text) { return text.endsWith(question, Qt::CaseInsensitive); });
      ASSERT_EQ(index.AnyEndsWith(question), expected) << question.toStdString();
      seen.append(RandomText(random, letters, 5));
      index.Add(seen.last());
    }
  }
}

QStringList Tags(const QString& page) {
  QStringList tags;
  TagSplitter splitter(page);
  for (QStringView tag = splitter.Next(); !tag.isNull(); tag = splitter.Next()) {
    tags.append(tag.toString());
  }
  return tags;
}

TEST(TagSplitter, EqualsTheExpressionThatItStandsForAtAnyLength) {
  const QRegularExpression expression(
      "\\<([^<>]*?)[^\\\\]\\>",
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::MultilineOption);
  const QStringList alphabet = {"<", "<", ">", ">", "\\", "a", "\n"};
  QRandomGenerator random(11);
  for (int i = 0; i < 50'000; ++i) {
    const QString page = RandomText(random, alphabet, 13);
    QStringList expected;
    for (auto matches = expression.globalMatch(page); matches.hasNext();) {
      expected.append(matches.next().captured());
    }
    ASSERT_EQ(Tags(page), expected) << page.toStdString();
  }
  const qsizetype many = 25'000'000;
  EXPECT_EQ(Tags(QString(many, u'<')).size(), 0);
  EXPECT_EQ(Tags(u'<' + QString(many, u'x') + u'>').size(), 1);
  EXPECT_EQ(Tags(QString("<\\").repeated(many / 2)).size(), 0);
}

}  // namespace
}  // namespace zentorin::test
