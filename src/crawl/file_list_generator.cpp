// SPDX-License-Identifier: MIT
#include "crawl/file_list_generator.h"

#include "base/activity.h"
#include "base/display_clock.h"
#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/product_name.h"
#include "crawl/crawler.h"
#include "crawl/file_list.h"
#include "jobs/date_template.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "net/api_web.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString LineAndSubject(const QString& line, const QString& subject) {
  return line + u"\r\n\r\n"_s + subject;
}

// A root that a redirect led to another page keeps its own directory, unless the site has moved.
QString RootBaseOf(const FetchedPage& page, const QString& rootUrl) {
  const bool named = !API_Web::BaseElement(page.text).isEmpty();
  if (named && !page.finalUrl.isEmpty()) return API_Web::BaseOfPage(page.text, page.finalUrl);
  return API_Web::BaseOfPage(page.text, API_Web::Moved(rootUrl, page.finalUrl));
}

}  // namespace

QCoro::Task<ListOutcome> FileListGenerator::Generate(bool listOnly, CancelToken cancel) {
  context_.activity.SetAddress({});
  context_.activity.SetFound(context_.files.Count());
  context_.activity.SetShare(0);
  const Activity::Scope listing(context_.activity, Phase::Listing);
  ListOutcome outcome;
  outcome.refusal = co_await CheckInput();
  if (outcome.refusal != ListOutcome::Refusal::None) co_return outcome;
  // The list of a date-format job was built when the job was loaded.
  if (!context_.job.Flag(TargetUrlItem::Opt)) {
    co_await BuildList(listOnly, outcome, cancel);
    outcome.failed = outcome.rootMissing || outcome.missing.AnyFailure();
  }
  context_.files.Flush();
  co_return outcome;
}

QCoro::Task<ListOutcome::Refusal> FileListGenerator::CheckInput() {
  const JobEditor& job = context_.job;
  if (context_.urlList.SelectedRow() < 0) {
    const bool nothingTyped =
        job[TargetUrlItem::Description].isEmpty() && job[TargetUrlItem::Root].isEmpty() &&
        job[TargetUrlItem::SubPattern].isEmpty() && job[TargetUrlItem::FilePattern].isEmpty();
    const QString text =
        nothingTyped ? u"URL リストを選択して下さい。"_s
                     : u"リストに追加（リストで右クリック→追加（下））後に入力して下さい。"_s;
    co_await Tell(text);
    co_return ListOutcome::Refusal::NoJob;
  }
  if (job[TargetUrlItem::Root].isEmpty()) {
    const QString text = u"URL が空白です！"_s;
    co_await Tell(text);
    co_return ListOutcome::Refusal::NoRootUrl;
  }
  co_return ListOutcome::Refusal::None;
}

QCoro::Task<void> FileListGenerator::BuildList(bool listOnly, ListOutcome& outcome,
                                               CancelToken cancel) {
  const JobEditor& job = context_.job;
  const QDateTime reference = context_.clock.Now();
  const QString rootUrl = ExpandedRoot(job.Fields(), reference);
  context_.files.ClearFileList();
  context_.activity.SetFound(0);
  if (job[TargetUrlItem::SubPattern].isEmpty() && job[TargetUrlItem::FilePattern].isEmpty()) {
    context_.files.Append(FileListRow::FromText(u"\t\t"_s + rootUrl));
    co_return;
  }
  Pattern subPages(job[TargetUrlItem::SubPattern]);
  Pattern files(FileExpression(job[TargetUrlItem::FilePattern]));
  const bool subPagesValid = co_await CheckPattern(subPages, outcome);
  if (!subPagesValid) co_return;
  if (!listOnly) {
    const bool filesValid = co_await CheckPattern(files, outcome);
    if (!filesValid) co_return;
  }
  PageExtractor extractor(context_, files, reference, cancel);
  Crawler crawler(context_, subPages, listOnly ? nullptr : &extractor, cancel);
  co_await CrawlFrom(rootUrl, crawler, outcome, cancel);
  // Expressions that were stopped on the way are named once, now that the list stands.
  co_await CheckPattern(subPages, outcome);
  if (!listOnly) co_await CheckPattern(files, outcome);
}

QCoro::Task<void> FileListGenerator::CrawlFrom(QString rootUrl, Crawler& crawler,
                                               ListOutcome& outcome, CancelToken cancel) {
  CrawlStart start;
  start.rootUrl = rootUrl;
  // The page in hand is named while the site has not answered yet.
  context_.activity.SetAddress(rootUrl);
  start.page = co_await context_.http.FetchPageText(rootUrl, cancel);
  context_.activity.SetAddress({});
  if (cancel.Cancelled()) co_return;
  if (!start.page.Ok()) {
    const MissReason why = MissReasonOf(start.page, rootUrl);
    outcome.rootMissing = true;
    outcome.missing.Add(why.kind);
    context_.activity.Say(CutForDisplay(why.text), Tone::Fault);
    const QString text =
        LineAndSubject(u"URL が見つかりません！"_s, context_.job[TargetUrlItem::Root]);
    co_await Tell(text);
    co_return;
  }
  const QString base = RootBaseOf(start.page, rootUrl);
  context_.job.SetRootBase(base);
  start.startAddress = start.page.finalUrl.isEmpty() ? base : start.page.finalUrl;
  context_.files.ClearFileList();
  const MissCounts missing = co_await crawler.Run(start);
  outcome.missing.Add(missing);
}

QCoro::Task<bool> FileListGenerator::CheckPattern(const Pattern& pattern, ListOutcome& outcome) {
  const QString fault = pattern.Fault();
  if (fault.isEmpty()) co_return true;
  outcome.missing.Add(MissKind::Expression);
  const QString text = LineAndSubject(fault, context_.job[TargetUrlItem::Root]);
  const MessageBox box = MessageBox::Error(text);
  co_await context_.messages.Ask(box);
  co_return false;
}

QCoro::Task<void> FileListGenerator::Tell(QString text) {
  MessageBox box;
  box.title = ProductName();
  box.text = text;
  co_await context_.messages.Ask(box);
}

}  // namespace zentorin
