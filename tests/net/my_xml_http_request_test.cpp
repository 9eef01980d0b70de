// SPDX-License-Identifier: MIT
#include "net/my_xml_http_request.h"

#include <gtest/gtest.h>

#include "base/activity.h"
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
  FetchedPage Fetch(const QString& address) {
    return QCoro::waitFor(http.FetchPageText(address, cancel.Token()));
  }
  QString Query(const QString& address, HeaderSelector selector) {
    return QCoro::waitFor(http.QueryHeader(address, selector, cancel.Token()));
  }

  const QString url = "http://x.test/p";
  CancelSource cancel;
  test::LoopbackServer server;
  CurlHttpEngine engine{server.ConnectTo()};
  Activity activity;
  FetchChoices choices{.firstPause = std::chrono::milliseconds(10)};
  MyXMLHttpRequest http{engine, activity, choices};
};

TEST_F(PageFetchTest, MarkThenHeaderThenDeclarationThenJudgeNameTheCharset) {
  const QByteArray meta = "<meta http-equiv=x content='text/html; charset=";
  const QByteArray html = "text/html";
  using Case = std::pair<QByteArray, QByteArray>;
  for (const auto& [type, body] :
       {Case("text/html; Charset=\"Shift_JIS\"", meta + "utf-8'>" + kSjis),
        Case("text/html;charset=euc-jp", meta + "utf-8'>" + kEuc),
        Case("text/html; charset=euc-jp", "\xEF\xBB\xBF" + meta + "shift_jis'>" + kUtf8),
        Case("text/html; charset=utf-8", meta + "x-sjis'>" + kSjis),
        Case(html, meta + "euc-jp'>" + kEuc),
        Case(html, meta + "Shift_JIS'><script charset=utf-8>" + kSjis),
        Case(html, QByteArray("<p>\x1b$B") + "F|K\\" + "\x1b(B"),
        Case(html, QByteArray("<p>") + QByteArray(kUtf8).repeated(20))}) {
    server.Route("/p", Answer::Text(body, type));
    const FetchedPage page = Fetch(url);
    EXPECT_TRUE(page.text.contains("日本")) << type.constData() << body.constData();
    EXPECT_TRUE(page.Ok() && page.finalUrl == url);
  }
}

TEST_F(PageFetchTest, AStatusIsFinalAndARedirectNamesTheFinalAddress) {
  for (const int status : {204, 304, 403, 404, 500}) {
    server.Route("/p", Answer::Status(status));
    const int before = server.Hits("/p");
    EXPECT_EQ(Fetch(url).httpStatus, status);
    EXPECT_EQ(server.Hits("/p"), before + (status == 500 ? 3 : 1)) << status << ": no other stage";
  }
  server.Route("/p", Answer::Redirect("http://y.test/q/"));
  server.Route("y.test/q/", Answer::Text("<p>"));
  EXPECT_EQ(Fetch(url).finalUrl, "http://y.test/q/");
  int calls = 0;
  server.RouteTo("/p", [&calls](const auto&) {
    const Answer page = Answer::Text("<a href=first><a href=second>");
    return ++calls == 2 ? page : page.Ends(Ending::CutOff, calls == 1 ? 8 : 14);
  });
  EXPECT_FALSE(Fetch(url).isCutShort) << "whole at the second try";
  const FetchedPage cut = Fetch(url);
  EXPECT_TRUE(cut.Ok() && cut.isCutShort && calls == 5);
  EXPECT_EQ(cut.text, "<a href=first>") << "as far as it came at the best of its tries";
  server.Route("/p", Answer::Generated(MyXMLHttpRequest::kMaxPageBytes + 1));
  EXPECT_FALSE(Fetch(url).Ok()) << "too large";
  for (const char* odd : {"", "mms://x.test/"}) EXPECT_FALSE(Fetch(odd).Ok());
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
  EXPECT_TRUE(page.Ok());
  EXPECT_TRUE(page.text.endsWith("日本")) << "the system code page, whatever is declared";
  ASSERT_EQ(server.Requests().size(), 3);
  const QList<test::ReceivedRequest>& requests = server.Requests();
  EXPECT_EQ(requests[1].Header("Content-Type"), "application/x-www-form-urlencoded");
  EXPECT_EQ(requests[2].Header("User-Agent") + requests[2].Header("Cache-Control"),
            "Zentorinno-cache");
  // The middle one decodes by a table of its own: what that does not know is left undecoded.
  using Case = std::pair<const char*, QString>;
  for (const auto& [declared, text] :
       {Case("<meta charset=euc-jp>\xc6\xfc", "日"), Case("<meta charset=big5>\xb1", "\u00B1")}) {
    server.Route("/p", Answer::Text(declared));
    const FetchedPage stage = QCoro::waitFor(http.FetchWithXmlHttp(url, true, "x", {}));
    EXPECT_TRUE(stage.text.endsWith(text)) << declared;
    EXPECT_EQ(requests.last().Header("If-Modified-Since"), "x");
  }
}

TEST_F(PageFetchTest, AHeaderQueryAsksTheAddressItselfAndReadsNoBody) {
  const QByteArray date = "Sat, 21 Nov 2026 08:00:00 GMT";
  server.Route("/f", Answer::Generated(300'000'000).With("Last-Modified", date));
  server.Route("/long", Answer::Text("").With("Last-Modified", QByteArray(3000, 'x')));
  server.Route("/r", Answer::Redirect("/f"));
  EXPECT_EQ(Query("http://x.test:8080/f", HeaderSelector::ContentLength), "300000000");
  EXPECT_EQ(Query("http://x.test/r", HeaderSelector::LastModified), date);
  EXPECT_EQ(Query("http://x.test", HeaderSelector::StatusCode), "404");
  EXPECT_EQ(Query("http://x.test/long", HeaderSelector::LastModified).size(), 1024);
  const test::ReceivedRequest first = server.Requests().first();
  EXPECT_EQ(first.Header("Host"), "x.test:8080");
  EXPECT_TRUE(first.Header("User-Agent").isNull());
  EXPECT_EQ(first.Header("Cache-Control"), "no-cache");
  EXPECT_LT(server.BodyBytesSent(), 100'000'000);
  for (const char* odd : {"https://x.test/f", "x.test/f", "", "http:///f", "ftp://x.test/f"}) {
    EXPECT_EQ(Query(odd, HeaderSelector::StatusCode), QString()) << odd;
  }
  EXPECT_EQ(server.Requests().size(), 5) << "no odd address is asked";
}

TEST_F(PageFetchTest, ACancelEndsEveryStage) {
  server.Route("/p", Answer().Ends(Ending::Silent));
  QObject::connect(&server, &test::LoopbackServer::RequestReceived, [this] { cancel.Cancel(); });
  EXPECT_EQ(Fetch(url).failure, HttpFailure::Cancelled);
  EXPECT_EQ(Query(url, HeaderSelector::StatusCode), QString());
  EXPECT_EQ(QCoro::waitFor(http.FetchWholeBody(url, cancel.Token())).failure,
            HttpFailure::Cancelled);
  EXPECT_EQ(server.Requests().size(), 1);
}

}  // namespace
}  // namespace zentorin
