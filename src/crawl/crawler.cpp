// SPDX-License-Identifier: MIT
#include "crawl/crawler.h"

#include <utility>

#include "base/activity.h"
#include "base/file_names.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "jobs/job_editor.h"
#include "net/api_web.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

Crawler::Crawler(const CrawlContext& context, Pattern& subPages, PageExtractor* extractor,
                 CancelToken cancel)
    : context_(context), subPages_(subPages), extractor_(extractor), cancel_(std::move(cancel)) {}

QCoro::Task<MissCounts> Crawler::Run(CrawlStart start) {
  if (extractor_ != nullptr) extractor_->SetStartAddress(start.startAddress);
  PageRecord root;
  root.link = start.startAddress;
  root.baseDir = API_Web::DirectoryOf(start.startAddress);
  root.address = start.startAddress;
  const bool isStart = start.page.finalUrl == start.startAddress;
  FetchedPage page = isStart ? start.page : FetchedPage();
  if (extractor_ != nullptr && !isStart) {
    page = co_await context_.http.FetchPageText(root.address, cancel_);
  }
  co_await Take(root, page);
  if (cancel_.Cancelled()) co_return missing_;
  if (subPages_.Expression().isEmpty()) {
    // Without a pattern for sub-pages the root is taken a second time, now under the address that
    // was asked for; its files are known by then.
    PageRecord alone;
    alone.link = start.rootUrl;
    alone.baseDir = BaseDirectoryOf(start.page, start.rootUrl);
    alone.address = API_Web::Resolve(alone.baseDir, start.rootUrl);
    FetchedPage again = start.page;
    again.isCutShort = false;  // that was told
    again.failure = HttpFailure::None;
    co_await Take(alone, again);
    co_return missing_;
  }
  PageWalk walk(context_, subPages_, start.startAddress, extractor_ != nullptr, cancel_);
  walk.Start(start.rootUrl, start.page);
  // Also after a cancel to its end: what is on its way ends with it.
  while (true) {
    std::optional<PageWalk::Step> step = co_await walk.Next();
    if (!step) co_return missing_;
    co_await TakeStep(walk, *step);
  }
}

QCoro::Task<void> Crawler::TakeStep(PageWalk& walk, PageWalk::Step& step) {
  if (step.kind == PageWalk::Step::Kind::Begin) {
    if (cancel_.Cancelled()) co_return;
    context_.activity.SetShare(step.share);
    context_.activity.SetAddress(step.record.link);
    co_return;
  }
  const FetchedPage page = co_await walk.PageOf(step);
  if (cancel_.Cancelled()) co_return;
  if (step.kind == PageWalk::Step::Kind::Missing) {
    const MissReason missing = NoteMissing(step.record.address, page);
    if (extractor_ == nullptr) ListPage(step.record, missing.text);
    co_return;
  }
  co_await Take(step.record, page);
}

// A page that could not be fetched is passed over. Without an extractor pages need not be.
QCoro::Task<void> Crawler::Take(PageRecord record, FetchedPage page) {
  const bool isMissing = extractor_ != nullptr && !page.Ok();
  MissReason missing;
  if (isMissing || page.isCutShort) missing = NoteMissing(record.address, page);
  if (extractor_ == nullptr) {
    ListPage(record, missing.text);
  } else if (page.Ok()) {
    co_await extractor_->Extract(record.address, page);
  }
}

// A page that its server does not know is passed over in silence.
MissReason Crawler::NoteMissing(const QString& address, const FetchedPage& page) {
  const MissReason why = MissReasonOf(page, address);
  missing_.Add(why.kind);
  if (IsFailure(why.kind)) {
    const QString what =
        page.Ok() ? u"ページが途中で切れています: "_s : u"ページを取得できません: "_s;
    const QString shown = CutForDisplay(address) + u"（%1）"_s.arg(CutForDisplay(why.text));
    context_.activity.Say(what + shown, Tone::Fault);
  }
  return why;
}

// `missing`: why it could not be had.
void Crawler::ListPage(const PageRecord& record, const QString& missing) {
  FileListRow row;
  row.Set(FileListRow::Size, QLatin1StringView(FileListRow::kNoPageSize));
  row.Set(FileListRow::Link, record.link);
  row.Set(FileListRow::BaseDir, record.baseDir);
  row.Set(FileListRow::Parent, record.parent);
  row.Set(FileListRow::Address, record.address);
  context_.files.Append(row, true);
  context_.files.SetReason(context_.files.Count() - 1, missing);
  context_.activity.SetFound(context_.files.Count());
}

}  // namespace zentorin
