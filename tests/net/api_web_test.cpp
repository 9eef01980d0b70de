// SPDX-License-Identifier: MIT
#include "net/api_web.h"

#include <QRandomGenerator>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "net/pattern.h"

namespace zentorin {
namespace {

using Table = std::vector<std::tuple<const char*, const char*, const char*>>;

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

TEST(ApiWeb, TheDirectoryOfAnAddress) {
  const Table rows{
      {"http://host/a/b.html?x=1", "", "http://host/a"},
      {"http://host/a/", "", "http://host/a"},
      {"http://host", "", "http://host"},
      {"http://h.test", "", "http://h.test"},
      {"http://h.test/", "", "http://h.test"},
      {"http://host/a/rel.2/page", "", "http://host/a/rel.2/page"},
      {"http://host/a.html?u=/x.y?z", "", "http://host/a.html?u="},
      {"file.html", "", ""},
      {"folder", "", "folder"},
      {"a/b/c.mp3", "", "a/b"},
      {"", "", ""},
      {"http://", "", "http:/"},
  };
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::DirectoryOf(Text(first)), Text(expected)) << first;
  }
}

TEST(ApiWeb, TheSiteRoot) {
  const Table rows{{"http://host/a/b", "", "http://host"},
                   {"https://host:81", "", "https://host:81"},
                   {"host/a", "", ""},
                   {"http:///a", "", "http://"}};
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::SiteRootOf(Text(first)), Text(expected)) << first;
  }
}

TEST(ApiWeb, ALinkBecomesAnAbsoluteAddress) {
  const Table rows{
      {"http://host/d", "http://other/x", "http://other/x"},
      {"http://host/d", "https://other/a/../b/./c", "https://other/b/c"},
      {"http://host/d", "HTTP://other/x", "http://host/d/HTTP://other/x"},
      {"https://host/d", "//cdn/x.js", "https://cdn/x.js"},
      {"host/d", "//cdn/x.js", "//cdn/x.js"},
      {"http://host/d/e", "/img/a.gif", "http://host/img/a.gif"},
      {"http:///d", "/img", "http://img"},
      {"http://host/d/e", "../a.gif", "http://host/d/a.gif"},
      {"http://host/d/e/f", "../../a.gif", "http://host/d/e/../a.gif"},
      {"http://host/e/x", "../e/x/../b", "http://host/e/e/b"},
      {"http://host/d/", "a.gif", "http://host/d/a.gif"},
      {"http://host/d", "./a.gif", "http://host/d/a.gif"},
      {"http://host/d", "././a.gif", "http://host/d/./a.gif"},
      {"http://host/d", "", "http://host/d/"},
      {" \"http://host/d\" ", " ' a.gif ' ", "http://host/d/a.gif"},
      {"http://host/d", "\ta.gif", "http://host/d/\ta.gif"},
  };
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::Resolve(Text(first), Text(second)), Text(expected))
        << first << " + " << second;
  }
}

TEST(ApiWeb, ALocalPathIsJoinedToItsFolder) {
  const Table rows{
      {"C:\\save", "sub\\a.mp3", "C:\\save\\sub\\a.mp3"},
      {"C:\\save\\", "\\a.mp3", "C:\\save\\a.mp3"},
      {"C:\\save\\", "a.mp3", "C:\\save\\a.mp3"},
      {"C:\\save", "/a.mp3", "C:\\save\\a.mp3"},
      {"C:\\save\\x", "..\\a.mp3", "C:\\save\\a.mp3"},
      {"C:\\save", "\"D:\\other\\..\\x\"", "D:\\other\\..\\x"},
      {"C:\\save", "\\\\server\\share", "\\\\server\\share"},
      {"/home/u", "a", "\\home\\u\\a"},
      {"", "", "\\"},
  };
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::ResolveLocal(Text(first), Text(second)), Text(expected))
        << first << " + " << second;
  }
}

TEST(ApiWeb, ThePathBelowARootOrItsAlternative) {
  const auto under = [](const char* full, const char* root, const char* alternative) {
    return API_Web::PathUnder(Text(full), Text(root), Text(alternative));
  };
  EXPECT_EQ(under("http://h/a/b/c.mp3", "http://h/a/index.html", "http://x/"), u"/b");
  EXPECT_EQ(under("http://h/a/b/c.mp3", "http://x/y/", "http://h/"), u"/a/b");
  EXPECT_EQ(under("http://h/a/c.mp3", "http://h/A/", "http://x/"), u"");
  EXPECT_EQ(under("http://h/abc/c.mp3", "http://h/a/", ""), u"bc") << "text, not components";
}

TEST(ApiWeb, QuotesAreStrippedUnlessADoubleQuoteStandsBetweenThem) {
  const Table rows{{" \"a\" ", "a", "a"},
                   {"\"a\"b\"", "\"a\"b\"", "\"a\"b\""},
                   {"'a'b'", "a'b", "a'b"},
                   {"'a\"b'", "'a\"b'", "'a\"b'"},
                   {"''a''", "'a'", "a"},
                   {"\"'a'\"", "a", "a"},
                   {"'\"a\"'", "'\"a\"'", "'\"a\"'"},
                   {"\"", "\"", "\""},
                   {"\"\"", "", ""},
                   {"' a '", " a ", " a "},
                   {"\t'a'", "\t'a'", "\t'a'"},
                   {"\"a'", "\"a'", "\"a'"}};
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::StripQuotes(Text(first), true), Text(second)) << first;
    EXPECT_EQ(API_Web::StripQuotes(Text(first), false), Text(expected)) << first;
  }
}

TEST(ApiWeb, TheFirstMatch) {
  const Table rows{{"abc", "", "abc"},  {"xAb1", "ab", "Ab"}, {"xAb1", "a(b)(1)", "b"},
                   {"abc", "z", ""},    {"abc", "(", ""},     {"a\nb", "^b$", "b"},
                   {"ac", "a(b)?c", ""}};
  for (const auto& [first, second, expected] : rows) {
    EXPECT_EQ(API_Web::FirstMatch(Text(first), Text(second)), Text(expected)) << second;
  }
}

TEST(ApiWeb, TheBaseOfAPage) {
  const QString url = QStringLiteral("http://h/d/p.html");
  const auto base = [&](const char* page) { return API_Web::BaseOfPage(Text(page), url); };
  EXPECT_EQ(base("<a>"), u"http://h/d");
  EXPECT_EQ(base("x<BASE HREF=\" http://b/ \" target=x>"), u"http://b/");
  EXPECT_EQ(base("<base href='http://b/'>"), u"http://h/d") << "only double quotes are seen";
  EXPECT_EQ(API_Web::BaseElement(QStringLiteral("<a>")), u"");
}

QString RandomText(QRandomGenerator& random, const QStringList& words) {
  QString text;
  for (quint32 n = random.bounded(12U); n > 0; --n) {
    text += words.at(static_cast<int>(random.bounded(static_cast<quint32>(words.size()))));
  }
  return text;
}

TEST(ApiWeb, TheScansEqualTheExpressionsThatTheyStandFor) {
  QRandomGenerator random(7);
  Pattern base(QStringLiteral("<base href=\\x22(.+?)\\x22.*?>"));
  Pattern stream(QStringLiteral("href *= *\\x22(mms://[^<>]+)\\x22"));
  const QStringList baseWords{"<base href=\"", "<BASE HREF=\"", "\"", ">", "\n", "a", "<", "\r"};
  const QStringList streamWords{"href", "HREF=\"mms://", "=", " ", "\"", "mms://", "a", "<", "\n"};
  for (int i = 0; i < 20'000; ++i) {
    const QString page = RandomText(random, baseWords);
    ASSERT_EQ(API_Web::BaseElement(page), API_Web::StripQuotes(base.First(page), false))
        << page.toStdString();
    const QString other = RandomText(random, streamWords);
    ASSERT_EQ(API_Web::StreamLink(other), stream.First(other)) << other.toStdString();
  }
}

TEST(ApiWeb, HostilePagesCostTimeInProportion) {
  const qsizetype many = 1'000'000;
  EXPECT_EQ(API_Web::BaseElement(QStringLiteral("<base href=\"").repeated(many)), u"");
  EXPECT_EQ(API_Web::BaseElement(QStringLiteral("<base href=\"") + QString(50 * many, u'x')), u"");
  EXPECT_EQ(API_Web::BaseElement(QStringLiteral("<base href=\"%1\">").arg(QString(many, u'x'))),
            u"")
      << "no server takes such an address";
  EXPECT_EQ(API_Web::StreamLink(QStringLiteral("href=\"mms://").repeated(many)).size(),
            (many - 1) * 12 - 1);
  EXPECT_EQ(API_Web::StreamLink(QStringLiteral("href   ").repeated(many)), u"");
  EXPECT_EQ(API_Web::StripQuotes(QString(many, u'\''), false), u"");
  EXPECT_EQ(API_Web::Resolve({}, QStringLiteral("/../").repeated(many)).size(), 4 * many);
}

}  // namespace
}  // namespace zentorin
