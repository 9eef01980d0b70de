// SPDX-License-Identifier: MIT
#include "net/http_engine.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include "net/curl_http_engine.h"
#include "net/host_book.h"
#include "tests/support/loopback_server.h"
#include "tests/support/temp_dir.h"
#include "tests/support/test_certificate.h"

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

  LoopbackServer server;
  CurlHttpEngine engine{server.ConnectTo()};
};

// An answer with these headers to the byte, after which the connection is closed.
Answer Raw(const QByteArray& headers, const QByteArray& body = "0123456789",
           const QByteArray& status = "HTTP/1.1 200 OK") {
  Answer answer;
  answer.raw = status + "\r\n" + headers + "\r\n\r\n" + body;
  return answer;
}

TEST_F(HttpEngineTest, EveryAnswerEndsInAClearOutcome) {
  using enum HttpFailure;
  // qCompress puts a length before the stream that "deflate" means.
  const Answer flood = Answer::Text(qCompress(QByteArray(60'000'000, '\0'), 9).mid(4));
  const QByteArray headers = ("X: " + QByteArray(1000, 'x') + "\r\n").repeated(1000);
  Answer cutStatus;
  cutStatus.raw = "HTTP/1.1 20";
  Answer cutHead;
  cutHead.raw = "HTTP/1.1 200 OK\r\nContent-Length: 10\r\nConte";
  const QList<std::tuple<const char*, Answer, HttpFailure, int>> rows = {
      {"whole", Raw("Content-Length: 10"), None, 200},
      {"not found", Answer::Status(404), None, 404},
      {"shorter than announced", Raw("Content-Length: 11"), CutOff, 200},
      {"cut off", Answer::Generated(300'000).Ends(Ending::CutOff, 150'000), CutOff, 200},
      {"length beyond numbers", Raw("Content-Length: 99999999999999999999999"), CutOff, 200},
      {"two lengths", Raw("Content-Length: 10\r\nContent-Length: 9"), BadAnswer, 0},
      {"not HTTP", Raw("", "", "220 mail.test ESMTP"), BadAnswer, 0},
      {"cut in the status line", cutStatus, CutOff, 0},
      {"cut in the headers", cutHead, CutOff, 0},
      {"broken chunk", Raw("Transfer-Encoding: chunked", "zz\r\nabc"), CutOff, 200},
      {"1 MB of headers", Raw(headers + "Content-Length: 10"), TooLarge, 0},
      {"redirect loop", Answer::Redirect("/x"), BadRedirect, 0},
      {"redirect to file:", Answer::Redirect("file:///etc/passwd"), BadRedirect, 0},
      {"redirect without an address", Answer::Status(302), None, 302},
      {"wrong encoding", Raw("Content-Length: 10\r\nContent-Encoding: gzip"), BadAnswer, 200},
      {"decompressing flood", flood.With("Content-Encoding", "deflate"), TooLarge, 200},
      {"silence", Answer().Ends(Ending::Silent), TimedOut, 0},
      {"a stall", Answer::Generated(50'000).Ends(Ending::Stall, 10'000), TimedOut, 200},
  };
  for (const auto& [what, scripted, failure, status] : rows) {
    server.Route("/x", scripted);
    HttpRequest request = Get("http://x.test/x");
    request.acceptCompressed = true;
    request.maxBodyBytes = 1'000'000;
    request.idleTimeout = milliseconds(failure == TimedOut ? 200 : 30'000);
    const HttpAnswer answer = Fetch(request);
    EXPECT_EQ(answer.failure, failure) << what;
    EXPECT_EQ(answer.head.status, status) << what;
    EXPECT_LE(answer.body.size(), request.maxBodyBytes) << what;
  }
  server.Route("/x", flood.With("Content-Encoding", "deflate"));
  EXPECT_EQ(Fetch("http://x.test/x").body, flood.body) << "not asked for: left as it is";
  CurlHttpEngine nowhere("::127.0.0.1:1,nonsense,a:b:c:d");
  EXPECT_EQ(QCoro::waitFor(FetchWhole(nowhere, Get("http://x.test/"))).failure, NoConnection);
}

TEST_F(HttpEngineTest, ASecureSiteIsTrustedByItsAuthorityAndMustEndWithAWord) {
  LoopbackServer secure(LoopbackServer::Transport::Tls);
  CurlHttpEngine there{secure.ConnectTo()};
  Answer endless = Answer::Text("0123456789");
  endless.contentLength = "";
  secure.Route("/whole", endless.Ends(Ending::Close));
  secure.Route("/cut", endless.Ends(Ending::CutOff, 10));
  secure.Route("/empty", endless.Ends(Ending::CutOff, 0));
  secure.Route("/counted", Answer::Text("0123456789").Ends(Ending::CutOff, 10));
  const auto failureOf = [&](const char* url) {
    return QCoro::waitFor(FetchWhole(there, Get(url))).failure;
  };
  EXPECT_EQ(failureOf("https://tls.test/whole"), HttpFailure::NoTrust);
  const test::TempDir folder;
  qputenv("SSL_CERT_FILE", folder.Write("ca.pem", test::kTestCertificate).toUtf8());
  EXPECT_EQ(failureOf("https://tls.test/whole"), HttpFailure::None);
  EXPECT_EQ(failureOf("https://tls.test/counted"), HttpFailure::None);
  EXPECT_EQ(failureOf("https://tls.test/cut"), HttpFailure::CutOff);
  EXPECT_EQ(failureOf("https://tls.test/empty"), HttpFailure::CutOff);
  EXPECT_EQ(failureOf("https://other.test/whole"), HttpFailure::NoTrust);
  qunsetenv("SSL_CERT_FILE");
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
    EXPECT_EQ(Fetch(url).failure, HttpFailure::BadAddress) << url;
  }
  EXPECT_EQ(server.Requests().size(), asked);
}

TEST_F(HttpEngineTest, HeadersAreSentAsGivenAlsoEmptyOnes) {
  server.Route("/r", Answer::Redirect("http://y.test/a%20b"));
  HttpRequest request = Get("http://x.test/r");
  request.headers = {{"If-Modified-Since", ""}, {"X-One", "1"}, {"X-Bad", "1\r\nX-Split: 2"}};
  request.userAgent = "Zentorin";
  EXPECT_EQ(Fetch(request).head.finalUrl, "http://y.test/a%20b");
  const test::ReceivedRequest& last = server.Requests().last();
  EXPECT_FALSE(last.Header("If-Modified-Since").isNull());
  EXPECT_EQ(last.Header("X-One") + last.Header("User-Agent"), "1Zentorin");
  for (const char* absent : {"X-Split", "Cookie"}) EXPECT_TRUE(last.Header(absent).isNull());
}

TEST_F(HttpEngineTest, ALargeBodyComesInWholeBlocksAndWaitsOnTheServerNotInMemory) {
  constexpr qint64 kBytes = 40'000'000;
  server.Route("/big", Answer::Generated(kBytes));
  const auto transfer = engine.Open(Get("http://x.test/big"));
  QCoro::waitFor(transfer->Head());
  // Nobody takes a block: what the server could send is bounded by the sockets' buffers.
  ASSERT_EQ(Fetch("http://y.test/nothing").head.status, 404);
  EXPECT_LT(server.BodyBytesSent(), kBytes / 2);
  qint64 got = 0;
  while (got < kBytes) {
    const qint64 size = std::min(kBlock, kBytes - got);
    const QByteArray block = QCoro::waitFor(transfer->NextBlock());
    ASSERT_EQ(block, LoopbackServer::GeneratedBytes(got, size));
    got += size;
  }
  EXPECT_TRUE(QCoro::waitFor(transfer->NextBlock()).isEmpty());
  EXPECT_EQ(transfer->Failure(), HttpFailure::None);
}

TEST_F(HttpEngineTest, OneByteAtATimeIsTooSlowButNoSilence) {
  Answer slow;
  slow.body = QByteArray(100, 'x');
  slow.pieceBytes = 1;
  slow.pieceInterval = milliseconds(20);
  server.Route("/slow", slow);
  HttpRequest request = Get("http://x.test/slow");
  request.idleTimeout = milliseconds(1500);
  EXPECT_EQ(Fetch(request).failure, HttpFailure::None);
  request.headTimeout = milliseconds(100);
  EXPECT_EQ(Fetch(request).failure, HttpFailure::None) << "the head had come";
  request.slowTime = milliseconds(500);
  EXPECT_EQ(Fetch(request).failure, HttpFailure::TooSlow);
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

TEST_F(HttpEngineTest, ACancelEndsEveryTransferInEachPhase) {
  server.Route("/silent", Answer().Ends(Ending::Silent));
  server.Route("/stall", Answer::Generated(500'000).Ends(Ending::Stall, 250'000));
  server.Route("/big", Answer::Generated(1'000'000'000));
  CancelSource cancel;
  const auto get = [&](const QString& url) {
    HttpRequest request = Get(url);
    request.cancel = cancel.Token();
    return request;
  };
  const auto unread = engine.Open(get("http://x.test/big"));
  EXPECT_EQ(QCoro::waitFor(unread->Head()).status, 200);
  QObject::connect(&server, &LoopbackServer::RequestReceived, [&](const QString& target) {
    if (target == "/last") cancel.Cancel();
  });
  std::vector<QCoro::Task<HttpAnswer>> answers;
  for (const char* path : {"silent", "stall", "big", "connecting", "last"}) {
    answers.push_back(FetchWhole(engine, get(QString("http://x.test/") + path)));
  }
  int cancelled = 0;
  for (auto& answer : answers) {
    if (QCoro::waitFor(answer).failure == HttpFailure::Cancelled) ++cancelled;
  }
  EXPECT_GE(cancelled, 4) << "404 may have come before";
  EXPECT_EQ(unread->Failure(), HttpFailure::Cancelled);
  EXPECT_TRUE(QCoro::waitFor(unread->NextBlock()).isEmpty());
  EXPECT_EQ(Fetch(get("http://x.test/a")).failure, HttpFailure::Cancelled);
  EXPECT_EQ(Fetch("http://x.test/a").failure, HttpFailure::None) << "another command goes on";
}

TEST_F(HttpEngineTest, SoManyRequestsAtATimeAndOneIsKeptForWhatIsRead) {
  server.SetFallback([](const auto&) { return Answer::Generated(10'000'000); });
  std::vector<std::unique_ptr<HttpTransfer>> early;
  HttpRequest request = Get("http://x.test/early");
  request.early = true;
  early.reserve(60);
  for (int i = 0; i < 20; ++i) early.push_back(engine.Open(request));
  QCoro::waitFor(early.front()->Head());
  for (const char* host : {"y", "z"}) {
    request.url = QString("http://%1.test/early").arg(host);
    for (int i = 0; i < 20; ++i) early.push_back(engine.Open(request));
  }
  const auto read = engine.Open(Get("http://x.test/read"));
  QCoro::waitFor(read->Head());
  EXPECT_EQ(server.Hits("x.test/early"), 5);
  EXPECT_EQ(server.Connections(), 12) << "to all hosts";
  // One that goes alone ends the early ones of its host.
  request = Get("http://x.test/alone");
  request.alone = true;
  const auto alone = engine.Open(request);
  EXPECT_EQ(QCoro::waitFor(alone->Head()).status, 200);
  EXPECT_EQ(early.front()->Failure(), HttpFailure::Dropped);
  EXPECT_EQ(early.back()->Failure(), HttpFailure::None);
}

TEST_F(HttpEngineTest, AHostThatAsksForAPauseIsLeftAloneAndAskedOneByOne) {
  int asked = 0;
  int most = 0;
  server.SetFallback([&](const auto&) {
    most = std::max(most, server.Busy());
    Answer whole = Answer::Generated(200'000);
    whole.pieceBytes = 50'000;
    whole.pieceInterval = milliseconds(10);
    return ++asked == 1 ? Answer::Status(503).With("Retry-After", "1") : whole;
  });
  QStringList told;
  engine.TellPauses([&told](const QString& host, auto) { told += host; });
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(Fetch("http://x.test/a").head.status, 503);
  std::vector<QCoro::Task<HttpAnswer>> answers;
  answers.reserve(4);
  for (int i = 0; i < 4; ++i) answers.push_back(FetchWhole(engine, Get("http://x.test/b")));
  for (auto& answer : answers) EXPECT_EQ(QCoro::waitFor(answer).body.size(), 200'000);
  EXPECT_GE(timer.elapsed(), 1000);
  EXPECT_EQ(most, 1);
  EXPECT_TRUE(told.contains("x.test") && told.last().isEmpty());
  engine.StartRun(6);
  answers.clear();
  for (int i = 0; i < 4; ++i) answers.push_back(FetchWhole(engine, Get("http://x.test/c")));
  for (auto& answer : answers) QCoro::waitFor(answer);
  EXPECT_GT(most, 1) << "another run begins anew";
}

TEST_F(HttpEngineTest, AHostThatIsNotThereIsGivenUpForAWhile) {
  CurlHttpEngine nowhere("dead.test::127.0.0.1:1," + server.ConnectTo());
  for (const HttpFailure failure : {HttpFailure::NoConnection, HttpFailure::NoConnection,
                                    HttpFailure::NoConnection, HttpFailure::HostDown}) {
    const HttpRequest request = Get("http://dead.test/");
    EXPECT_EQ(QCoro::waitFor(FetchWhole(nowhere, request)).failure, failure);
  }
  EXPECT_EQ(QCoro::waitFor(FetchWhole(nowhere, Get("http://live.test/"))).head.status, 404);
  server.Route("/led", Answer::Redirect("http://dead2.test/"));
  CurlHttpEngine partly("dead2.test::127.0.0.1:1," + server.ConnectTo());
  for (int i = 0; i < HostBook::kMaxMisses; ++i) {
    const HttpAnswer led = QCoro::waitFor(FetchWhole(partly, Get("http://live.test/led")));
    EXPECT_EQ(led.failure, HttpFailure::NoConnection);
    EXPECT_EQ(led.head.finalUrl, "http://dead2.test/");
  }
  EXPECT_EQ(QCoro::waitFor(FetchWhole(partly, Get("http://live.test/"))).head.status, 404);
  HostBook book;
  const HttpRequest request;
  const HostBook::Time now{};
  book.NotConnected("h", true, now);
  EXPECT_EQ(book.Ask("h", request, now), HostBook::Entry::Down) << "a time-out says it at once";
  EXPECT_EQ(book.Ask("h", request, now + HostBook::kDownTime), HostBook::Entry::Now);
  HttpHead busy;
  busy.status = 429;
  busy.retryAfter = std::chrono::hours(1);
  book.Answered("h", busy, now);
  EXPECT_EQ(book.PausedUntil("h"), now + HostBook::kMaxPause);
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
