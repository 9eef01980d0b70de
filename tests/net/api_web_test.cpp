// SPDX-License-Identifier: MIT
#include "net/api_web.h"

#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "net/pattern.h"
#include "tests/support/random_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

using Pair = std::pair<const char*, const char*>;
using Case = std::tuple<const char*, const char*, const char*>;

TEST(ApiWeb, TheDirectoryOfAnAddressAndItsSiteRoot) {
  for (const auto& [address, directory] :
       {Pair("http://host/a/b.html?x=1", "http://host/a"), Pair("http://host/a/", "http://host/a"),
        Pair("http://host", "http://host"), Pair("http://h.test", "http://h.test"),
        Pair("http://h.test/", "http://h.test"),
        Pair("http://host/a/rel.2/page", "http://host/a/rel.2/page"),
        Pair("http://host/a.html?u=/x.y?z", "http://host/a.html?u="), Pair("file.html", ""),
        Pair("folder", "folder"), Pair("a/b/c.mp3", "a/b"), Pair("", ""),
        Pair("http://", "http:/")}) {
    EXPECT_EQ(API_Web::DirectoryOf(address), directory) << address;
  }
  for (const auto& [address, root] :
       {Pair("http://host/a/b", "http://host"), Pair("https://host:81", "https://host:81"),
        Pair("host/a", ""), Pair("http:///a", "http://")}) {
    EXPECT_EQ(API_Web::SiteRootOf(address), root) << address;
  }
}

TEST(ApiWeb, ALinkBecomesAnAbsoluteAddress) {
  for (const auto& [first, second, expected] :
       {Case("http://host/d", "http://other/x", "http://other/x"),
        Case("http://host/d", "https://other/a/../b/./c", "https://other/b/c"),
        Case("http://host/d", "HTTP://other/x", "http://host/d/HTTP://other/x"),
        Case("https://host/d", "//cdn/x.js", "https://cdn/x.js"),
        Case("host/d", "//cdn/x.js", "//cdn/x.js"),
        Case("http://host/d/e", "/img/a.gif", "http://host/img/a.gif"),
        Case("http:///d", "/img", "http://img"),
        Case("http://host/d/e", "../a.gif", "http://host/d/a.gif"),
        Case("http://host/d/e/f", "../../a.gif", "http://host/d/e/../a.gif"),
        Case("http://host/e/x", "../e/x/../b", "http://host/e/e/b"),
        Case("http://host/d/", "a.gif", "http://host/d/a.gif"),
        Case("http://host/d", "./a.gif", "http://host/d/a.gif"),
        Case("http://host/d", "././a.gif", "http://host/d/./a.gif"),
        Case("http://host/d", "", "http://host/d/"),
        Case(" \"http://host/d\" ", " ' a.gif ' ", "http://host/d/a.gif"),
        Case("http://host/d", "\ta.gif", "http://host/d/\ta.gif")}) {
    EXPECT_EQ(API_Web::Resolve(first, second), expected) << first << " + " << second;
  }
}

TEST(ApiWeb, ALocalPathIsJoinedToItsFolder) {
  for (const auto& [first, second, expected] :
       {Case("C:\\save", "sub\\a.mp3", "C:\\save\\sub\\a.mp3"),
        Case("C:\\save\\", "\\a.mp3", "C:\\save\\a.mp3"),
        Case("C:\\save\\", "a.mp3", "C:\\save\\a.mp3"),
        Case("C:\\save", "/a.mp3", "C:\\save\\a.mp3"),
        Case("C:\\save\\x", "..\\a.mp3", "C:\\save\\a.mp3"),
        Case("C:\\save", "\"D:\\other\\..\\x\"", "D:\\other\\..\\x"),
        Case("C:\\save", "\\\\server\\share", "\\\\server\\share"),
        Case("/home/u", "a", "\\home\\u\\a"), Case("", "", "\\")}) {
    EXPECT_EQ(API_Web::ResolveLocal(first, second), expected) << first << " + " << second;
  }
}

TEST(ApiWeb, ThePathBelowARootOrItsAlternative) {
  EXPECT_EQ(API_Web::PathUnder("http://h/a/b/c.mp3", "http://h/a/index.html", "http://x/"), u"/b");
  EXPECT_EQ(API_Web::PathUnder("http://h/a/b/c.mp3", "http://x/y/", "http://h/"), u"/a/b");
  EXPECT_EQ(API_Web::PathUnder("http://h/a/c.mp3", "http://h/A/", "http://x/"), u"");
  EXPECT_EQ(API_Web::PathUnder("http://h/abc/c.mp3", "http://h/a/", ""), u"bc")
      << "text, not components";
}

TEST(ApiWeb, QuotesAreStrippedUnlessADoubleQuoteStandsBetweenThem) {
  for (const auto& [first, second, expected] :
       {Case(" \"a\" ", "a", "a"), Case("\"a\"b\"", "\"a\"b\"", "\"a\"b\""),
        Case("'a'b'", "a'b", "a'b"), Case("'a\"b'", "'a\"b'", "'a\"b'"), Case("''a''", "'a'", "a"),
        Case("\"'a'\"", "a", "a"), Case("'\"a\"'", "'\"a\"'", "'\"a\"'"), Case("\"", "\"", "\""),
        Case("\"\"", "", ""), Case("' a '", " a ", " a "), Case("\t'a'", "\t'a'", "\t'a'"),
        Case("\"a'", "\"a'", "\"a'")}) {
    EXPECT_EQ(API_Web::StripQuotes(first, true), second) << first;
    EXPECT_EQ(API_Web::StripQuotes(first, false), expected) << first;
  }
}

TEST(ApiWeb, TheFirstMatch) {
  for (const auto& [first, second, expected] :
       {Case("abc", "", "abc"), Case("xAb1", "ab", "Ab"), Case("xAb1", "a(b)(1)", "b"),
        Case("abc", "z", ""), Case("abc", "(", ""), Case("a\nb", "^b$", "b"),
        Case("ac", "a(b)?c", "")}) {
    EXPECT_EQ(API_Web::FirstMatch(first, second), expected) << second;
  }
}

TEST(ApiWeb, TheBaseOfAPage) {
  const QString url = "http://h/d/p.html";
  const auto base = [&](const char* page) { return API_Web::BaseOfPage(page, url); };
  EXPECT_EQ(base("<a>"), u"http://h/d");
  EXPECT_EQ(base("x<BASE HREF=\" http://b/ \" target=x>"), u"http://b/");
  EXPECT_EQ(base("<base href='http://b/'>"), u"http://h/d") << "only double quotes are seen";
  EXPECT_EQ(API_Web::BaseElement("<a>"), u"");
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
  EXPECT_EQ(API_Web::BaseElement(u"<base href=\""_s.repeated(many)), u"");
  EXPECT_EQ(API_Web::BaseElement(u"<base href=\""_s + QString(50 * many, u'x')), u"");
  EXPECT_EQ(API_Web::BaseElement(u"<base href=\"%1\">"_s.arg(QString(many, u'x'))), u"")
      << "no server takes such an address";
  EXPECT_EQ(API_Web::StreamLink(u"href=\"mms://"_s.repeated(many)).size(), (many - 1) * 12 - 1);
  EXPECT_EQ(API_Web::StreamLink(u"href   "_s.repeated(many)), u"");
  EXPECT_EQ(API_Web::StripQuotes(QString(many, u'\''), false), u"");
  EXPECT_EQ(API_Web::Resolve({}, u"/../"_s.repeated(many)).size(), 4 * many);
}

}  // namespace
}  // namespace zentorin
