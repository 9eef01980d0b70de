// SPDX-License-Identifier: MIT
#include "crawl/page_extractor.h"

#include "tests/crawl/crawl_fixture.h"

namespace zentorin::test {
namespace {

// The files of one page.
class Extractor : public CrawlTest {
 protected:
  Extractor() { Set(TargetUrlItem::SubPattern, ""); }

  void Html(const char* html) { server_.Route("/", Answer::Text(html)); }
  void File(const char* target, int bytes, const char* lastModified) {
    Answer answer = Answer::Text(QByteArray(bytes, 'x'));
    if (*lastModified != 0) answer = answer.With("Last-Modified", lastModified);
    server_.Route(target, answer);
  }
};

TEST_F(Extractor, ReadsKeywordsAsFixedExpressions) {
  const char* const html =
      "<a href=\"a.mp3\"><a href=\"b.pdf\"><img src=\"c.gif\"><IMG SRC=d.GIF alt=x>"
      "<img alt=x src=\"e.gif\"><a url=\"f.MP3\"><img src=\"g.jpeg\">";
  Html(html);
  for (const auto& [pattern, links] :
       {std::pair(".PDF", "a.mp3\" f.MP3\""), std::pair(".mp3", "a.mp3\" f.MP3\""),
        std::pair(".gif", "c.gif\" d.GIF"), std::pair(".JPEG", "g.jpeg\""),
        std::pair(".png", "")}) {
    Set(TargetUrlItem::FilePattern, pattern);
    Generate();
    EXPECT_EQ(Links(), links) << pattern;
  }
}

TEST_F(Extractor, TakesTheLinkOutOfWhatTheExpressionCaught) {
  Set(TargetUrlItem::FilePattern, R"re((?:<guid>|\w+=)[^>]*?\.mp3)re");
  Html(R"(<a HREF=a.mp3><x url=  b.mp3 ><y href="c.mp3"><z href=url=d\e.mp3><i foo=f.mp3>)");
  Generate();
  EXPECT_EQ(Links(), "a.mp3 b.mp3 c.mp3 de.mp3 foo=f.mp3 de.mp3")
      << "a link with a backslash is not met again under its stored form";
}

TEST_F(Extractor, ListsALinkOnceWhereverItStands) {
  Page("/", "x/a.mp3 A.MP3 b.mp3 b.mp3 p.html");
  Page("/p.html", "b.mp3 xb.mp3 c.mp3");
  Set(TargetUrlItem::SubPattern, R"re(href="(.+?\.html)")re");
  Generate();
  EXPECT_EQ(Links(), "x/a.mp3 b.mp3 xb.mp3 c.mp3")
      << "a link that a listed one ends with counts as listed";
}

TEST_F(Extractor, ResolvesAgainstTheBaseElement) {
  Html(R"(<base href="http://o.test/d/"><a href="a.mp3">)");
  Generate();
  EXPECT_EQ(Rows(), "|-|     -|a.mp3|http://o.test/d/|~/|http://o.test/d/a.mp3");
}

TEST_F(Extractor, AsksForDateAndSize) {
  Check(TargetUrlItem::DispModify);
  Page("/", "a.mp3 b.mp3 c.mp3 d.mp3");
  File("/a.mp3", 1001, "Wed, 01 May 2024 14:30:05 GMT");
  File("/b.mp3", 1'234'000, "");
  File("/c.mp3", 1000, "yesterday");
  server_.Route("/d.mp3", [] {
    Answer answer = Answer::Text("x").Ends(Answer::Ending::Close);
    answer.contentLength = QByteArray("");
    return answer;
  }());
  Generate();
  EXPECT_EQ(Rows(),
            "|2024/05/01 23:30:05|     2|a.mp3|~|~/|~/a.mp3\n"
            "|-| 1,234|b.mp3|~|~/|~/b.mp3\n"
            "|-|     1|c.mp3|~|~/|~/c.mp3\n"
            "|-|     -|d.mp3|~|~/|~/d.mp3");
  EXPECT_EQ(server_.Hits("/a.mp3"), 2);
  clockOptions_.useGmt = true;
  Generate();
  EXPECT_EQ(files_.Row(0)[FileListRow::Date], "2024/05/01 14:30:05");
}

TEST_F(Extractor, KeepsFilesInsideTheDateWindow) {
  Check(TargetUrlItem::DispModify);
  Check(TargetUrlItem::Modify);
  Page("/", "a.mp3 b.mp3 c.mp3 d.mp3");
  // The clock shows 2024/05/01 23:30:05, nine hours ahead of GMT.
  File("/a.mp3", 1, "Wed, 01 May 2024 02:30:05 GMT");
  File("/b.mp3", 1, "Wed, 01 May 2024 02:30:04 GMT");
  File("/c.mp3", 1, "");
  File("/d.mp3", 1, "Mon, 01 Jan 1990 00:00:00 GMT");
  for (const auto& [days, links] :
       {std::pair("0.5", "a.mp3 c.mp3"), std::pair("  1", "a.mp3 b.mp3 c.mp3"),
        std::pair("", "a.mp3 b.mp3 c.mp3 d.mp3"), std::pair("9e99", "a.mp3 b.mp3 c.mp3 d.mp3")}) {
    Set(TargetUrlItem::Date, days);
    Generate();
    EXPECT_EQ(Links(), links) << "days: " << days;
  }
}

}  // namespace
}  // namespace zentorin::test
