// SPDX-License-Identifier: MIT
// Extraction and crawl without a network: what a large page and a long list of visited pages cost.
#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include "base/display_clock.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "crawl/crawler.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "tests/crawl/memory_engine.h"
#include "tests/support/fakes.h"

namespace zentorin {
namespace {

// A job and what it works on; its engine is never asked.
struct Bench {
  Bench() {
    urlList.ReplaceAll({TargetUrlItem().ToLine()});
    urlList.Select(0);
    job.Edit(TargetUrlItem::Depth, QStringLiteral("1"));
  }

  test::MemoryEngine engine{[](const QString&) { return QByteArray(); }};
  RunState state;
  MyXMLHttpRequest http{engine, state};
  StatusBoard board;
  test::RecordingMessageBoxes messages;
  test::SettableClock time;
  ClockOptions clockOptions;
  DisplayClock clock{time, clockOptions};
  UrlList urlList;
  JobEditor job{urlList};
  FileList files;
  CrawlContext context{http, state, board, messages, clock, clockOptions, urlList, job, files};
};

FetchedPage PageOfLinks(qint64 count, const QString& ending) {
  FetchedPage page;
  page.status = 0;
  page.finalUrl = QStringLiteral("http://h.test/index.html");
  for (qint64 i = 0; i < count; ++i) {
    page.text += QStringLiteral("<li><a href=\"files/2024/item%1%2\">Item</a></li>\n")
                     .arg(QString::number(i), ending);
  }
  return page;
}

void ExtractLinks(benchmark::State& state) {
  const FetchedPage page = PageOfLinks(state.range(0), QStringLiteral(".mp3"));
  for (auto _ : state) {
    Bench bench;
    Pattern files(QStringLiteral(R"re(<.+?(?:href|url)=["']?(.+?\.mp3)["' >])re"));
    PageExtractor extractor(bench.context, files, bench.clock.Now());
    QCoro::waitFor(extractor.Extract(page.finalUrl, page));
    if (bench.files.Count() != state.range(0)) state.SkipWithError("rows are missing");
  }
}
BENCHMARK(ExtractLinks)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

// The same page taken again: every link is a known one.
void ExtractKnownLinks(benchmark::State& state) {
  const FetchedPage page = PageOfLinks(state.range(0), QStringLiteral(".mp3"));
  Bench bench;
  Pattern files(QStringLiteral(R"re(<.+?(?:href|url)=["']?(.+?\.mp3)["' >])re"));
  PageExtractor extractor(bench.context, files, bench.clock.Now());
  QCoro::waitFor(extractor.Extract(page.finalUrl, page));
  for (auto _ : state) QCoro::waitFor(extractor.Extract(page.finalUrl, page));
}
BENCHMARK(ExtractKnownLinks)->Arg(100'000)->Unit(benchmark::kMillisecond);

void VisitPages(benchmark::State& state) {
  CrawlStart start;
  start.page = PageOfLinks(state.range(0), QStringLiteral(".html"));
  start.startAddress = start.page.finalUrl;
  start.rootUrl = start.page.finalUrl;
  for (auto _ : state) {
    Bench bench;
    Pattern subPages(QStringLiteral(R"re((?:href|url|src)=["']?(.+?)["' >])re"));
    Crawler crawler(bench.context, subPages, nullptr);
    QCoro::waitFor(crawler.Run(start));
    if (bench.files.Count() != state.range(0) + 1) state.SkipWithError("pages are missing");
  }
}
BENCHMARK(VisitPages)->Arg(20'000)->Arg(40'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zentorin

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
