// SPDX-License-Identifier: MIT
// Extraction and crawl without a network: what a large page and a long list of visited pages cost.
#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include "base/activity.h"
#include "base/display_clock.h"
#include "crawl/crawler.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "net/fetch_choices.h"
#include "tests/crawl/memory_engine.h"
#include "tests/support/fakes.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// A job and what it works on; its engine is never asked.
struct Bench {
  Bench() {
    urlList.ReplaceAll({TargetUrlItem()});
    urlList.Select(0);
    job.Edit(TargetUrlItem::Depth, u"1"_s);
  }

  test::MemoryEngine engine{[](const QString&) { return QByteArray(); }};
  Activity activity;
  FetchChoices choices;
  MyXMLHttpRequest http{engine, activity, choices};
  test::RecordingMessageBoxes messages;
  test::SettableClock time;
  ClockOptions clockOptions;
  DisplayClock clock{time, clockOptions};
  UrlList urlList;
  JobEditor job{urlList};
  FileList files;
  CrawlContext context{http, activity, messages, clock, urlList, job, files, choices};
};

FetchedPage PageOfLinks(qint64 count, const QString& ending) {
  FetchedPage page;
  page.httpStatus = kHttpOk;
  page.finalUrl = u"http://h.test/index.html"_s;
  for (qint64 i = 0; i < count; ++i) {
    page.text +=
        u"<li><a href=\"files/2024/item%1%2\">Item</a></li>\n"_s.arg(QString::number(i), ending);
  }
  return page;
}

void ExtractLinks(benchmark::State& state) {
  const FetchedPage page = PageOfLinks(state.range(0), u".mp3"_s);
  for (auto _ : state) {
    Bench bench;
    Pattern files(uR"re(<.+?(?:href|url)=["']?(.+?\.mp3)["' >])re"_s);
    PageExtractor extractor(bench.context, files, bench.clock.Now(), {});
    QCoro::waitFor(extractor.Extract(page.finalUrl, page));
    if (bench.files.Count() != state.range(0)) state.SkipWithError("rows are missing");
  }
}
BENCHMARK(ExtractLinks)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

// The same page taken again: every link is a known one.
void ExtractKnownLinks(benchmark::State& state) {
  const FetchedPage page = PageOfLinks(state.range(0), u".mp3"_s);
  Bench bench;
  Pattern files(uR"re(<.+?(?:href|url)=["']?(.+?\.mp3)["' >])re"_s);
  PageExtractor extractor(bench.context, files, bench.clock.Now(), {});
  QCoro::waitFor(extractor.Extract(page.finalUrl, page));
  for (auto _ : state) QCoro::waitFor(extractor.Extract(page.finalUrl, page));
}
BENCHMARK(ExtractKnownLinks)->Arg(100'000)->Unit(benchmark::kMillisecond);

void VisitPages(benchmark::State& state) {
  CrawlStart start;
  start.page = PageOfLinks(state.range(0), u".html"_s);
  start.startAddress = start.page.finalUrl;
  start.rootUrl = start.page.finalUrl;
  for (auto _ : state) {
    Bench bench;
    Pattern subPages(uR"re((?:href|url|src)=["']?(.+?)["' >])re"_s);
    Crawler crawler(bench.context, subPages, nullptr, {});
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
