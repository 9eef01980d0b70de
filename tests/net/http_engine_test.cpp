// SPDX-License-Identifier: MIT
#include "net/http_engine.h"

#include <gtest/gtest.h>

#include "base/run_state.h"
#include "net/curl_http_engine.h"
#include "tests/support/loopback_server.h"

namespace zentorin {
namespace {

using std::chrono::milliseconds;
using test::Answer;
using test::LoopbackServer;
using Ending = test::Answer::Ending;

constexpr qint64 kBlock = HttpTransfer::kBlockBytes;

class HttpEngineTest : public testing::Test {
 protected:
  HttpRequest Get(const QString& url) const {
    HttpRequest request;
    request.url = url;
    return request;
  }
  HttpAnswer Fetch(const QString& url) { return Fetch(Get(url)); }
  HttpAnswer Fetch(HttpRequest request) {
    return QCoro::waitFor(FetchWhole(engine, std::move(request)));
  }

  RunState state;
  LoopbackServer server;
  CurlHttpEngine engine{state, server.ConnectTo()};
};

struct FailureCase {
  const char* what;
  Answer answer;
  HttpFailure failure;
  int status;
};

QList<FailureCase> FailureCases() {
  const Answer ten = Answer::Text("0123456789");
  Answer longer = ten;
  longer.contentLength = "11";
  longer.ending = Ending::Close;
  Answer negative = ten;
  negative.contentLength = "-5";
  Answer endless = ten;
  endless.contentLength = "99999999999999999999999";
  endless.ending = Ending::Close;
  Answer notHttp;
  notHttp.raw = "220 mail.test ESMTP\r\n";
  Answer brokenChunk;
  brokenChunk.raw = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nabc";
  Answer flood = ten;
  for (int i = 0; i < 1000; ++i)
    flood.headers.append({"X-" + QByteArray::number(i), QByteArray(1000, 'x')});
  return {
      {"whole", ten, HttpFailure::None, 200},
      {"not found", Answer::Status(404), HttpFailure::None, 404},
      {"shorter than announced", longer, HttpFailure::CutOff, 200},
      {"cut off", Answer::Generated(300'000).Ends(Ending::CutOff, 150'000), HttpFailure::CutOff,
       200},
      {"negative length", negative, HttpFailure::BadAnswer, 0},
      {"length beyond numbers", endless, HttpFailure::CutOff, 200},
      {"two lengths", ten.With("Content-Length", "9"), HttpFailure::BadAnswer, 0},
      {"not HTTP", notHttp, HttpFailure::BadAnswer, 0},
      {"broken chunk", brokenChunk, HttpFailure::CutOff, 200},
      {"1 MB of headers", flood, HttpFailure::TooLarge, 0},
      {"redirect loop", Answer::Redirect("/x"), HttpFailure::BadAnswer, 0},
      {"redirect to file:", Answer::Redirect("file:///etc/passwd"), HttpFailure::BadAnswer, 0},
      {"redirect to ftp:", Answer::Redirect("ftp://x.test/"), HttpFailure::BadAnswer, 0},
      {"redirect without an address", Answer::Status(302), HttpFailure::None, 302},
      {"wrong encoding", ten.With("Content-Encoding", "gzip"), HttpFailure::BadAnswer, 200},
      {"silence", Answer().Ends(Ending::Silent), HttpFailure::TimedOut, 0},
      {"a stall", Answer::Generated(50'000).Ends(Ending::Stall, 10'000), HttpFailure::TimedOut,
       200},
  };
}

TEST_F(HttpEngineTest, EveryAnswerEndsInAClearOutcome) {
  for (const FailureCase& row : FailureCases()) {
    SCOPED_TRACE(row.what);
    server.Route("/x", row.answer);
    HttpRequest request = Get("http://x.test/x");
    request.acceptCompressed = true;
    request.idleTimeout = milliseconds(200);
    const HttpAnswer answer = Fetch(request);
    EXPECT_EQ(answer.failure, row.failure) << qUtf8Printable(answer.failureText);
    EXPECT_EQ(answer.head.status, row.status);
    EXPECT_EQ(answer.failureText.isEmpty(), row.failure == HttpFailure::None);
  }
}

TEST_F(HttpEngineTest, OnlyHttpAddressesAreAskedAndOddCharactersAreEncoded) {
  server.SetFallback([](const auto&) { return Answer::Text("ok"); });
  using Case = std::pair<QString, const char*>;
  for (const auto& [url, target] :
       {Case("HTTP://x.test/動 画.mp4?q=あ b%20", "/%E5%8B%95%20%E7%94%BB.mp4?q=%E3%81%82%20b%20"),
        Case("http://日本.test:81", "/"), Case("http://x.test?a=1#part", "/?a=1")}) {
    const HttpAnswer answer = Fetch(url);
    EXPECT_EQ(answer.failure, HttpFailure::None) << qUtf8Printable(url);
    EXPECT_EQ(server.Requests().last().target, target);
    EXPECT_EQ(answer.head.finalUrl, url) << "unchanged as text when nothing redirects";
  }
  EXPECT_EQ(server.Requests().at(1).host, "xn--wgv71a.test");
  const qsizetype asked = server.Requests().size();
  for (const char* url :
       {"", "x", "/a", "ftp://x.test/", "file:///etc/passwd", "http://", "http:///a", "http://a b/",
        "http://x.test/a\nb", "http://:80/", "javascript:alert(1)", "mms://x.test/a"}) {
    const HttpAnswer answer = Fetch(url);
    EXPECT_EQ(answer.failure, HttpFailure::BadAddress) << url;
    EXPECT_EQ(answer.head.status, 0) << url;
  }
  EXPECT_EQ(server.Requests().size(), asked);
}

TEST_F(HttpEngineTest, HeadersAreSentAsGivenAlsoEmptyOnes) {
  server.Route("/r", Answer::Redirect("http://y.test/a%20b"));
  server.Route("y.test/a%20b", Answer::Text("there"));
  HttpRequest request = Get("http://x.test/r");
  request.headers = {{"If-Modified-Since", ""}, {"X-One", "1"}, {"X-Bad", "1\r\nX-Split: 2"}};
  request.userAgent = "Zentorin";
  const HttpAnswer answer = Fetch(request);
  EXPECT_EQ(answer.body, "there");
  EXPECT_EQ(answer.head.finalUrl, "http://y.test/a%20b");
  const test::ReceivedRequest& last = server.Requests().last();
  EXPECT_FALSE(last.Header("If-Modified-Since").isNull());
  EXPECT_EQ(last.Header("X-One"), "1");
  EXPECT_EQ(last.Header("User-Agent"), "Zentorin");
  EXPECT_TRUE(last.Header("X-Split").isNull());
  EXPECT_TRUE(last.Header("Cookie").isNull());
}

TEST_F(HttpEngineTest, ALargeBodyComesInWholeBlocksAndWaitsOnTheServerNotInMemory) {
  constexpr qint64 kBytes = 40'000'000;
  server.Route("/big", Answer::Generated(kBytes));
  const auto transfer = engine.Open(Get("http://x.test/big"));
  QCoro::waitFor(transfer->Head());
  // Nobody takes a block: what the server could send is bounded by the sockets' buffers.
  const auto other = Fetch("http://y.test/nothing");
  ASSERT_EQ(other.head.status, 404);
  EXPECT_LT(server.BodyBytesSent(), kBytes / 2);
  qint64 got = 0;
  while (true) {
    const QByteArray block = QCoro::waitFor(transfer->NextBlock());
    if (block.isEmpty()) break;
    ASSERT_EQ(block.size(), std::min(kBlock, kBytes - got));
    ASSERT_EQ(block, LoopbackServer::GeneratedBytes(got, block.size()));
    got += block.size();
  }
  EXPECT_EQ(got, kBytes);
  EXPECT_EQ(transfer->Failure(), HttpFailure::None);
}

TEST_F(HttpEngineTest, ADecompressingFloodEndsAtTheLimit) {
  // qCompress puts a length before the stream that "deflate" means.
  const QByteArray small = qCompress(QByteArray(60'000'000, '\0'), 9).mid(4);
  server.Route("/z", Answer::Text(small).With("Content-Encoding", "deflate"));
  HttpRequest request = Get("http://x.test/z");
  request.acceptCompressed = true;
  request.maxBodyBytes = 1'000'000;
  const HttpAnswer answer = Fetch(request);
  EXPECT_EQ(answer.failure, HttpFailure::TooLarge);
  EXPECT_LE(answer.body.size(), request.maxBodyBytes);
  request.acceptCompressed = false;
  EXPECT_EQ(Fetch(request).body, small) << "not asked for: left as it is";
}

TEST_F(HttpEngineTest, OneByteAtATimeEndsByTheTotalTimeButNotByTheIdleTime) {
  Answer slow = Answer::Text(QByteArray(40, 'x'));
  slow.pieceBytes = 1;
  slow.pieceInterval = milliseconds(10);
  server.Route("/slow", slow);
  HttpRequest request = Get("http://x.test/slow");
  request.idleTimeout = milliseconds(300);
  EXPECT_EQ(Fetch(request).failure, HttpFailure::None);
  request.totalTimeout = milliseconds(100);
  EXPECT_EQ(Fetch(request).failure, HttpFailure::TimedOut);
}

TEST_F(HttpEngineTest, NoConnectionIsAnOutcome) {
  CurlHttpEngine nowhere(state, "::127.0.0.1:1,nonsense,a:b:c:d");
  const HttpAnswer answer = QCoro::waitFor(FetchWhole(nowhere, Get("http://x.test/")));
  EXPECT_EQ(answer.failure, HttpFailure::Unreachable);
  EXPECT_EQ(answer.head.status, 0);
}

TEST_F(HttpEngineTest, ConnectionsAreUsedAgain) {
  server.Route("/a", Answer::Text(QByteArray(10'000, 'a')));
  for (int i = 0; i < 20; ++i) Fetch("http://x.test/a");
  EXPECT_EQ(server.Connections(), 1) << "bodies read to their end";
  server.Route("/b", Answer::Generated(60'000));
  for (int i = 0; i < 100; ++i) {
    const HttpHead head = QCoro::waitFor(engine.Open(Get("http://x.test/b"))->Head());
    EXPECT_EQ(head.Header("content-length"), "60000");
  }
  EXPECT_LT(server.Connections(), 20) << "small rests are read in the background";
  server.Route("/c", Answer::Generated(500'000'000));
  QCoro::waitFor(engine.Open(Get("http://x.test/c"))->Head());
  Fetch("http://x.test/a");
  EXPECT_LT(server.BodyBytesSent(), 100'000'000) << "a large rest is not";
}

QCoro::Task<void> ReadAll(HttpEngine& engine, HttpRequest request, QList<HttpFailure>& failures) {
  const std::unique_ptr<HttpTransfer> transfer = engine.Open(std::move(request));
  co_await transfer->Head();
  while (true) {
    const QByteArray block = co_await transfer->NextBlock();
    if (block.isEmpty()) break;
  }
  failures.append(transfer->Failure());
}

TEST_F(HttpEngineTest, ACancelEndsEveryTransferInEachPhase) {
  server.Route("/silent", Answer().Ends(Ending::Silent));
  server.Route("/stall", Answer::Generated(500'000).Ends(Ending::Stall, 250'000));
  server.Route("/big", Answer::Generated(1'000'000'000));
  QList<HttpFailure> failures;
  const auto unread = engine.Open(Get("http://x.test/big"));
  const HttpHead head = QCoro::waitFor(unread->Head());
  EXPECT_EQ(head.status, 200);
  ReadAll(engine, Get("http://x.test/silent"), failures);
  ReadAll(engine, Get("http://x.test/stall"), failures);
  ReadAll(engine, Get("http://x.test/big"), failures);
  QObject::connect(&server, &LoopbackServer::RequestReceived, &state,
                   [this](const QString& target) {
                     if (target == "/last") state.RequestCancel();
                   });
  ReadAll(engine, Get("http://x.test/connecting"), failures);
  QCoro::waitFor(ReadAll(engine, Get("http://x.test/last"), failures));
  while (failures.size() < 5) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_GE(failures.count(HttpFailure::Cancelled), 4) << "404 may have come before";
  EXPECT_EQ(unread->Failure(), HttpFailure::Cancelled);
  EXPECT_TRUE(QCoro::waitFor(unread->NextBlock()).isEmpty());
  EXPECT_EQ(Fetch("http://x.test/a").failure, HttpFailure::Cancelled);
}

// Opens the next transfer, drops one and cancels, all from inside a resumed coroutine.
QCoro::Task<int> DropAndOpen(HttpEngine& engine, HttpRequest request) {
  std::unique_ptr<HttpTransfer> kept = engine.Open(request);
  for (int i = 0; i < 50; ++i) {
    std::unique_ptr<HttpTransfer> next = engine.Open(request);
    co_await next->Head();
    kept = std::move(next);
  }
  const HttpHead head = co_await kept->Head();
  co_return head.status;
}

TEST_F(HttpEngineTest, TransfersMayBeOpenedAndDroppedFromAnyResumedCoroutine) {
  server.Route("/a", Answer::Generated(300'000));
  EXPECT_EQ(QCoro::waitFor(DropAndOpen(engine, Get("http://x.test/a"))), 200);
  HttpHead head;
  head.status = 1;
  {
    const auto dropped = engine.Open(Get("http://x.test/a"));
    auto waiting = dropped->Head();
    waiting.then([&head](const HttpHead& got) { head = got; });
  }
  while (head.status == 1) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_EQ(head.status, 0) << "a wait whose transfer is gone ends";
}

}  // namespace
}  // namespace zentorin
