// SPDX-License-Identifier: MIT
#include "net/api_web.h"

#include <gtest/gtest.h>

#include "net/character_references.h"
#include "net/pattern.h"
#include "tests/support/random_text.h"

namespace zentorin {
namespace {

using Pair = std::pair<const char*, const char*>;
using Case = std::tuple<const char*, const char*, const char*>;

TEST(ApiWeb, TheDirectoryOfAnAddressAndItsSiteRoot) {
  for (const auto& [address, directory] :
       {Pair("http://h/a/b.html?x=1", "http://h/a"), Pair("http://h/a/", "http://h/a"),
        Pair("http://h.test", "http://h.test"), Pair("http://h/rel.2/p", "http://h/rel.2/p"),
        Pair("http://h/a.html?u=/x.y?z", "http://h/a.html?u="), Pair("file.html", ""),
        Pair("folder", "folder"), Pair("a/b/c.mp3", "a/b"), Pair("", ""),
        Pair("http://", "http:/")}) {
    EXPECT_EQ(API_Web::DirectoryOf(address), directory) << address;
  }
  for (const auto& [address, root] :
       {Pair("http://h/a/b", "http://h"), Pair("h/a", ""), Pair("https://h:81", "https://h:81"),
        Pair("http:///a", "http://")}) {
    EXPECT_EQ(API_Web::SiteRootOf(address), root) << address;
  }
}

TEST(ApiWeb, ALinkBecomesAnAbsoluteAddressAndAPathIsJoinedToItsFolder) {
  for (const auto& [base, link, expected] :
       {Case("http://h/d", "http://o/x", "http://o/x"), Case("h/d", "//c/x.js", "//c/x.js"),
        Case("http://h/d", "https://o/a/../b/./c", "https://o/b/c"),
        Case("http://h/d", "HTTP://o/x", "http://h/d/HTTP://o/x"),
        Case("https://h/d", "//cdn/x.js", "https://cdn/x.js"), Case("http:///d", "/i", "http://i"),
        Case("http://h/d/e", "/i/a.gif", "http://h/i/a.gif"),
        Case("http://h/d/e", "../a.gif", "http://h/d/a.gif"),
        Case("http://h/d/", "a", "http://h/d/a"),
        Case("http://h/d/e/f", "../../a", "http://h/d/e/../a"),
        Case("http://h/e/x", "../e/x/../b", "http://h/e/e/b"),
        Case("http://h/d", "./a", "http://h/d/a"), Case("http://h/d", "././a", "http://h/d/./a"),
        Case("http://h/d", "", "http://h/d/"), Case(" \"http://h/d\" ", " ' a ' ", "http://h/d/a"),
        Case("http://h/d", "\ta", "http://h/d/\ta")}) {
    EXPECT_EQ(API_Web::Resolve(base, link), expected) << base << " + " << link;
  }
  for (const auto& [folder, path, expected] :
       {Case("C:\\save", "sub\\a.mp3", "C:\\save\\sub\\a.mp3"), Case("", "", "\\"),
        Case("C:\\s\\", "\\a", "C:\\s\\a"), Case("C:\\s\\", "a", "C:\\s\\a"),
        Case("C:\\s", "/a", "C:\\s\\a"), Case("C:\\s\\x", "..\\a", "C:\\s\\a"),
        Case("C:\\s", "\"D:\\o\\..\\x\"", "D:\\o\\..\\x"),
        Case("C:\\s", "\\\\server\\share", "\\\\server\\share"),
        Case("/home/u", "a", "\\home\\u\\a")}) {
    EXPECT_EQ(API_Web::ResolveLocal(folder, path), expected) << folder << " + " << path;
  }
}

TEST(ApiWeb, ReferencesAreDecodedOnceAndOnlyToWhatALinkMayHold) {
  for (const auto& [link, decoded] :
       {Pair("a?b=1&amp;c=2&d=3", "a?b=1&c=2&d=3"), Pair("&amp;amp;&#38;lt;", "&amp;&lt;"),
        Pair("&#x26;&#X41;&#66;&#128512;&#x1F600;", "&AB😀😀"),
        Pair("&lt;&gt;&quot;&apos;", "<>\"'"),
        Pair("&#0;&#9;&#x1F;&#127;&#x9f;", "&#0;&#9;&#x1F;&#127;&#x9f;"),
        Pair("&#xD800;&#xDFFF;&#x110000;", "&#xD800;&#xDFFF;&#x110000;"),
        Pair("&;&#;&#x;&#+5;&#1e;&#99999999999;&copy;&ampx;&amp",
             "&;&#;&#x;&#+5;&#1e;&#99999999999;"
             "&copy;&ampx;&amp")}) {
    EXPECT_EQ(DecodeReferences(link), decoded) << link;
  }
  EXPECT_EQ(WithoutFragment("a&#38;b#c"), "a&#38;b");
  EXPECT_EQ(WithoutFragment("a&#b;c"), "a&");
  EXPECT_EQ(API_Web::Moved("http://日.test/日/", "https://www.xn--wgv.test/x"),
            "https://www.xn--wgv.test/%E6%97%A5/");
  const qsizetype many = 1'000'000;
  EXPECT_EQ(DecodeReferences(QString("&#38;").repeated(many)).size(), many);
  EXPECT_EQ(WithoutFragment(QString("&#9").repeated(many)).size(), 1);
}

TEST(ApiWeb, ThePathBelowARootOrItsAlternative) {
  EXPECT_EQ(API_Web::PathUnder("http://h/a/b/c.mp3", "http://h/a/index.html", "http://x/"), u"/b");
  EXPECT_EQ(API_Web::PathUnder("http://h/a/b/c.mp3", "http://x/y/", "http://h/"), u"/a/b");
  EXPECT_EQ(API_Web::PathUnder("http://h/a/c.mp3", "http://h/A/", "http://x/"), u"");
  EXPECT_EQ(API_Web::PathUnder("http://h/abc/c.mp3", "http://h/a/", ""), u"bc") << "text";
}

TEST(ApiWeb, QuotesAreStrippedUnlessADoubleQuoteStandsBetweenThem) {
  for (const auto& [text, once, all] :
       {Case(" \"a\" ", "a", "a"), Case("\"a\"b\"", "\"a\"b\"", "\"a\"b\""),
        Case("'a'b'", "a'b", "a'b"), Case("'a\"b'", "'a\"b'", "'a\"b'"), Case("''a''", "'a'", "a"),
        Case("\"'a'\"", "a", "a"), Case("'\"a\"'", "'\"a\"'", "'\"a\"'"), Case("\"", "\"", "\""),
        Case("\"\"", "", ""), Case("' a '", " a ", " a "), Case("\t'a'", "\t'a'", "\t'a'"),
        Case("\"a'", "\"a'", "\"a'")}) {
    EXPECT_EQ(API_Web::StripQuotes(text, true), once) << text;
    EXPECT_EQ(API_Web::StripQuotes(text, false), all) << text;
  }
}

TEST(ApiWeb, TheFirstMatchAndTheBaseOfAPage) {
  for (const auto& [text, pattern, match] :
       {Case("abc", "", "abc"), Case("xAb1", "ab", "Ab"), Case("xAb1", "a(b)(1)", "b"),
        Case("abc", "z", ""), Case("abc", "(", ""), Case("a\nb", "^b$", "b"),
        Case("ac", "a(b)?c", "")}) {
    EXPECT_EQ(API_Web::FirstMatch(text, pattern), match) << pattern;
  }
  for (const auto& [page, base] :
       {Pair("<a>", "http://h/d"), Pair("<base href='http://b/'>", "http://h/d"),
        Pair("x<BASE HREF=\" http://b/ \" target=x>", "http://b/")}) {
    EXPECT_EQ(API_Web::BaseOfPage(page, "http://h/d/p.html"), base) << page;
  }
}

TEST(ApiWeb, TheScansEqualTheExpressionsThatTheyStandFor) {
  QRandomGenerator random(7);
  Pattern base("<base href=\\x22(.+?)\\x22.*?>");
  Pattern stream("href *= *\\x22(mms://[^<>]+)\\x22");
  const QStringList baseWords{"<base href=\"", "<BASE HREF=\"", "\"", ">", "\n", "a", "<", "\r"};
  const QStringList streamWords{"href", "HREF=\"mms://", "=", " ", "\"", "mms://", "a", "<", "\n"};
  for (int i = 0; i < 20'000; ++i) {
    const QString page = test::RandomText(random, baseWords, 11);
    ASSERT_EQ(API_Web::BaseElement(page), API_Web::StripQuotes(base.First(page), false))
        << page.toStdString();
    const QString other = test::RandomText(random, streamWords, 11);
    ASSERT_EQ(API_Web::StreamLink(other), stream.First(other)) << other.toStdString();
  }
}

TEST(ApiWeb, HostilePagesCostTimeInProportion) {
  const qsizetype many = 1'000'000;
  EXPECT_EQ(API_Web::BaseElement(QString("<base href=\"").repeated(many)), u"");
  EXPECT_EQ(API_Web::BaseElement(QString("<base href=\"") + QString(50 * many, u'x')), u"");
  EXPECT_EQ(API_Web::BaseElement(QString("<base href=\"%1\">").arg(QString(many, u'x'))), u"")
      << "no server takes such an address";
  EXPECT_EQ(API_Web::StreamLink(QString("href=\"mms://").repeated(many)).size(),
            (many - 1) * 12 - 1);
  EXPECT_EQ(API_Web::StripQuotes(QString(many, u'\''), false), u"");
  EXPECT_EQ(API_Web::Resolve({}, QString("/../").repeated(many)).size(), 4 * many);
}

}  // namespace
}  // namespace zentorin
