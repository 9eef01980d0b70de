// SPDX-License-Identifier: MIT
#include <tuple>

#include "tests/crawl/memory_engine.h"
#include "tests/download/download_fixture.h"

namespace zentorin {
namespace {

// One job whose root page links to one page and to one file.
class MissingTest : public test::DownloadTest {
 protected:
  MissingTest() {
    job.Edit(TargetUrlItem::SubPattern, "href=\"(.+?\\.html)\"");
    job.Edit(TargetUrlItem::Depth, "1");
    job.EditFlag(TargetUrlItem::OverWrite, true);
    workspace.choices.tries = 0;
  }

  // With that answer for one address, whole answers for the others.
  RunOutcome Batch(const QString& missed, const test::MemoryAnswer& answer) {
    const QMap<QString, test::MemoryAnswer> site = {
        {kRoot, QByteArray(R"(<a href="/sub.html"><a href="/a.mp3">)")},
        {kPage, QByteArray("-")},
        {kFile, QByteArray("music")}};
    test::MemoryEngine engine(
        [&](const QString& url) { return url == missed ? answer : site.value(url, answer); });
    MyXMLHttpRequest http(engine, activity, workspace.choices);
    FileListGenerator generator(
        {http, activity, messages, workspace.clock, urlList, job, files, workspace.choices});
    const DownloadContext context{{engine, http, activity, capture, workspace.drives, options,
                                   workspace.clock, workspace.choices},
                                  messages,
                                  opener,
                                  log,
                                  job,
                                  files};
    RunDriver own(context, urlList, generator, power);
    return QCoro::waitFor(own.BatchCommand());
  }

  QString Reason() const {
    return files.index(0, FileListRow::Mark).data(Qt::ToolTipRole).toString();
  }

  const QString kRoot = "http://site.test/dir/index.html";
  const QString kPage = "http://site.test/sub.html";
  const QString kFile = "http://site.test/a.mp3";
};

TEST_F(MissingTest, NoFailureOfTheNetworkEndsWellAndEachIsCountedByItsKind) {
  EXPECT_EQ(ExitStatusOf(Batch({}, QByteArray())), kExitDone);
  using Case = std::tuple<HttpFailure, int, const char*>;
  for (const auto& [failure, status, kind] :
       {Case(HttpFailure::None, 403, "HTTP エラー"), Case(HttpFailure::None, 500, "HTTP エラー"),
        Case(HttpFailure::None, 404, "リンク切れ"), Case(HttpFailure::CutOff, 410, "リンク切れ"),
        Case(HttpFailure::NoConnection, 0, "接続できない"),
        Case(HttpFailure::HostDown, 0, "接続できない"),
        Case(HttpFailure::NoName, 0, "ホスト名不明"), Case(HttpFailure::NoTrust, 0, "証明書エラー"),
        Case(HttpFailure::CutOff, 200, "途中で切断"), Case(HttpFailure::TimedOut, 0, "時間切れ"),
        Case(HttpFailure::TimedOut, 200, "時間切れ"), Case(HttpFailure::TooSlow, 200, "時間切れ"),
        Case(HttpFailure::TooLarge, 200, "大きすぎる"), Case(HttpFailure::BadAddress, 0, "その他"),
        Case(HttpFailure::BadAnswer, 0, "その他"),
        Case(HttpFailure::BadRedirect, 302, "転送エラー")}) {
    const bool gone = QString(kind) == "リンク切れ";
    for (const QString& missed : {kRoot, kPage, kFile}) {
      SCOPED_TRACE((missed + u' ' + kind).toStdString());
      outcome = Batch(missed, {"", status, failure});
      const bool nobodysFault = gone && missed != kRoot;
      EXPECT_EQ(ExitStatusOf(outcome), nobodysFault ? kExitDone : kExitFailures);
      EXPECT_EQ(outcome.missing.Text(), QString(kind) + " 1");
      EXPECT_EQ(outcome.rootsMissing, missed == kRoot ? QStringList("daily") : QStringList());
      EXPECT_EQ(Status() == "異常終了", missed == kRoot || (status == 200 && missed == kFile));
      EXPECT_EQ(Reason().section(QChar(u' '), 0, 0), missed == kFile ? "site.test:" : "");
    }
  }
}

TEST_F(MissingTest, ARowKeepsItsReasonUntilItIsFetchedAnew) {
  server.Route("/cut", test::Answer::Text("333").Ends(test::Answer::Ending::CutOff, 1));
  home.Write("save/taken/keep", "x");
  home.Write("save/old", "x");
  server.Route("/taken", test::Answer::Text("x"));
  server.Route("/page.asx", test::Answer::Status(403));
  server.Route("/none.asx", test::Answer::Text("no stream"));
  capture.result.code = RowCode::DownloadFailed;
  job.Edit(TargetUrlItem::Root, {});
  job.EditFlag(TargetUrlItem::OverWrite, false);
  using Case = std::tuple<const char*, const char*, QString>;
  for (const auto& [address, mark, reason] :
       {Case("http://s.test/gone", "?", "s.test: HTTP 404"),
        Case("http://s.test/cut", "x", "s.test: 応答が途中で切れました（1 / 3 バイト）"),
        Case("http://s.test/page.asx", "?", "s.test: HTTP 403"),
        Case("http://s.test/none.asx", "?", "s.test: ストリームのアドレスが書かれていません"),
        Case("http://s.test/a.wmv", "x", "s.test: 録画できませんでした"),
        Case("http://s.test/taken", "x",
             home.Path("save/taken") + ": フォルダであるか、アクセスできないパスです"),
        Case("noslash", "", "http または https のアドレスではありません"),
        Case("http://s.test/old", "-", "")}) {
    EXPECT_EQ(MarkOf(address), mark) << address;
    EXPECT_EQ(Reason(), reason) << address;
    EXPECT_EQ(outcome.missing.Text().isEmpty(), reason.isEmpty()) << address;
    EXPECT_EQ(outcome.anyFailure, *mark != '-' && !reason.contains("404")) << address;
  }
  MarkOf("http://s.test/cut");
  server.RouteTo("/cut", [this](const test::ReceivedRequest&) {
    test::Answer answer = test::Answer::Text("333");
    const int hits = server.Hits("/cut");
    if (hits == 3 || hits == 4) answer.raw = "no HTTP\r\n\r\n";
    return answer;
  });
  options.addDate = true;
  files.SelectAll();
  EXPECT_EQ(ExitStatusOf(RunRows()), kExitFailures) << "it came without the date in its name";
  EXPECT_EQ(Reason(), "更新日時を取得できません（s.test: 応答が正しくありません）");
  job.EditFlag(TargetUrlItem::OverWrite, true);
  files.SelectAll();
  RunRows();
  EXPECT_EQ(Marks(), "o");
  EXPECT_EQ(Reason(), "");
}

}  // namespace
}  // namespace zentorin
