// SPDX-License-Identifier: MIT
#include "net/my_xml_http_request.h"

#include <tuple>

#include <gtest/gtest.h>

#include "base/run_state.h"
#include "net/curl_http_engine.h"
#include "tests/support/loopback_server.h"

namespace zentorin {
namespace {

using test::Answer;
using Ending = test::Answer::Ending;

constexpr char kSjis[] = "\x93\xfa\x96\x7b";  // 日本
constexpr char kEuc[] = "\xc6\xfc\xcb\xdc";
constexpr char kUtf8[] = "\xe6\x97\xa5\xe6\x9c\xac";

class PageFetchTest : public testing::Test {
 protected:
  FetchedPage Fetch(const QString& address) { return QCoro::waitFor(http.FetchPageText(address)); }
  QString Query(const QString& address, HeaderSelector selector) {
    return QCoro::waitFor(http.QueryHeader(address, selector));
  }

  const QString url = "http://x.test/p";
  RunState state;
  test::LoopbackServer server;
  CurlHttpEngine engine{state, server.ConnectTo()};
  MyXMLHttpRequest http{engine, state};
};

TEST(PageAddress, HostAndPathAreSplitAsText) {
  using Case = std::tuple<const char*, const char*, const char*>;
  for (const auto& [text, host, path] :
       {Case("http://x.test/a/b?c", "x.test", "/a/b?c"), Case("http://x.test", "x.test", "/"),
        Case("http://x.test:81/", "x.test:81", "/"), Case("x.test/a", "", ""),
        Case("a://b://c/d", "b:", "//c/d"), Case("http://", "", "/")}) {
    EXPECT_EQ(HostOf(text), host) << text;
    EXPECT_EQ(PathOf(text), path) << text;
  }
}

TEST_F(PageFetchTest, HeaderThenMarkThenDeclarationThenJudgeNameTheCharset) {
  const QByteArray meta = "<meta http-equiv=x content='text/html; charset=";
  const QByteArray html = "text/html";
  using Case = std::pair<QByteArray, QByteArray>;
  for (const auto& [type, body] :
       {Case("text/html; Charset=\"Shift_JIS\"", meta + "utf-8'>" + kSjis),
        Case("text/html;charset=euc-jp", meta + "utf-8'>" + kEuc),
        Case(html, "\xEF\xBB\xBF" + meta + "shift_jis'>" + kUtf8),
        Case(html, meta + "euc-jp'>" + kEuc), Case(html, meta + "Shift_JIS'>" + kSjis),
        Case(html, meta + "Shift_JIS'><script charset=utf-8>" + kSjis),
        Case(html, QByteArray("<p>\x1b$B") + "F|K\\" + "\x1b(B"),
        Case(html, QByteArray("<p>") + QByteArray(kUtf8).repeated(20))}) {
    server.Route("/p", Answer::Text(body, type));
    const FetchedPage page = Fetch(url);
    EXPECT_EQ(page.status, 0);
    EXPECT_TRUE(page.text.contains("日本")) << type.constData() << body.constData();
    EXPECT_EQ(page.finalUrl, url);
  }
}

TEST_F(PageFetchTest, AStatusIsFinalAndARedirectNamesTheFinalAddress) {
  for (const int status : {204, 304, 403, 404, 500}) {
    server.Route("/p", Answer::Status(status));
    const int before = server.Hits("/p");
    EXPECT_EQ(Fetch(url).status, status);
    EXPECT_EQ(server.Hits("/p"), before + 1) << "no further stage";
  }
  server.Route("/p", Answer::Redirect("http://y.test/q/"));
  server.Route("y.test/q/", Answer::Text("<p>"));
  EXPECT_EQ(Fetch(url).finalUrl, "http://y.test/q/");
  server.Route("/p", Answer::Generated(9000).Ends(Ending::CutOff, 100));
  EXPECT_LT(Fetch(url).status, 0) << "a page that broke off";
  server.Route("/p", Answer::Generated(MyXMLHttpRequest::kMaxPageBytes + 1));
  EXPECT_LT(Fetch(url).status, 0) << "too large";
  EXPECT_LT(Fetch(QString()).status, 0);
  EXPECT_LT(Fetch("mms://x.test/").status, 0);
}

TEST_F(PageFetchTest, WithoutAnAnswerTheStagesFollowEachOther) {
  const QByteArray body = QByteArray("<meta charset=utf-8>") + kSjis;
  int calls = 0;
  server.RouteTo("/p", [&](const auto&) {
    ++calls;
    Answer broken;
    broken.raw = "?";
    return calls <= 2 ? broken : Answer::Text(body);
  });
  const FetchedPage page = Fetch(url);
  EXPECT_EQ(page.status, 0);
  EXPECT_TRUE(page.text.endsWith("日本")) << "the system code page, whatever is declared";
  ASSERT_EQ(server.Requests().size(), 3);
  const test::ReceivedRequest& second = server.Requests().at(1);
  EXPECT_FALSE(second.Header("If-Modified-Since").isNull());
  EXPECT_EQ(second.Header("Content-Type"), "application/x-www-form-urlencoded");
  EXPECT_EQ(server.Requests().at(2).Header("User-Agent"), "Zentorin");
  EXPECT_EQ(server.Requests().at(2).Header("Cache-Control"), "no-cache");
}

TEST_F(PageFetchTest, TheXmlHttpStageDecodesByItsOwnTable) {
  server.Route("/p", Answer::Text(QByteArray("<meta charset=euc-jp>") + kEuc));
  FetchedPage page = QCoro::waitFor(http.FetchWithXmlHttp(url, true, "x"));
  EXPECT_TRUE(page.text.endsWith("日本"));
  server.Route("/p", Answer::Text(QByteArray("<meta charset=big5>") + kSjis));
  page = QCoro::waitFor(http.FetchWithXmlHttp(url, true, "x"));
  EXPECT_TRUE(page.text.endsWith(QString::fromLatin1(kSjis))) << "unknown: left undecoded";
  EXPECT_EQ(server.Requests().last().Header("If-Modified-Since"), "x");
  const qsizetype asked = server.Requests().size();
  EXPECT_EQ(QCoro::waitFor(http.FetchWithXmlHttp(QString(), true, "")).status, -1);
  EXPECT_EQ(server.Requests().size(), asked);
}

TEST_F(PageFetchTest, AHeaderQueryAsksPort80AndReadsNoBody) {
  const Answer file =
      Answer::Generated(300'000'000).With("Last-Modified", "Sat, 21 Nov 2026 08:00:00 GMT");
  server.Route("/f", file);
  server.Route("/long", Answer::Text("").With("Last-Modified", QByteArray(3000, 'x')));
  server.Route("/r", Answer::Redirect("/f"));
  const QString f = "https://x.test/f";
  EXPECT_EQ(Query(f, HeaderSelector::ContentLength), "300000000");
  EXPECT_EQ(Query(f, HeaderSelector::LastModified), "Sat, 21 Nov 2026 08:00:00 GMT");
  EXPECT_EQ(Query("http://x.test/r", HeaderSelector::StatusCode), "200");
  EXPECT_EQ(Query("http://x.test", HeaderSelector::StatusCode), "404");
  EXPECT_EQ(Query("http://x.test/long", HeaderSelector::LastModified).size(), 1024);
  EXPECT_EQ(Query("http://x.test/", HeaderSelector::LastModified), QString());
  EXPECT_EQ(server.Requests().first().Header("Host"), "x.test") << "plain HTTP, no port";
  EXPECT_TRUE(server.Requests().first().Header("User-Agent").isNull());
  EXPECT_EQ(server.Requests().first().Header("Cache-Control"), "no-cache");
  EXPECT_LT(server.BodyBytesSent(), 100'000'000);
  const qsizetype asked = server.Requests().size();
  for (const char* odd :
       {"http://x.test:8080/f", "x.test/f", "", "http:///f", "http://x@y.test/f"}) {
    EXPECT_EQ(Query(odd, HeaderSelector::StatusCode), QString()) << odd;
  }
  EXPECT_EQ(server.Requests().size(), asked);
}

TEST_F(PageFetchTest, ACancelIsStatusOne) {
  server.Route("/p", Answer().Ends(Ending::Silent));
  QObject::connect(&server, &test::LoopbackServer::RequestReceived, &state,
                   &RunState::RequestCancel);
  EXPECT_EQ(Fetch(url).status, 1);
  EXPECT_EQ(Query(url, HeaderSelector::StatusCode), QString());
  EXPECT_EQ(QCoro::waitFor(http.FetchWholeBody(url)).status, 1);
  EXPECT_EQ(server.Requests().size(), 1);
}

}  // namespace
}  // namespace zentorin
