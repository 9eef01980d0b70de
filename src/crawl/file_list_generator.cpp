// SPDX-License-Identifier: MIT
#include "crawl/file_list_generator.h"

#include "base/display_clock.h"
#include "base/message_boxes.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "crawl/crawler.h"
#include "crawl/file_list.h"
#include "jobs/date_template.h"
#include "jobs/job_editor.h"
#include "jobs/url_list.h"
#include "net/api_web.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Title of the boxes that have none of their own.
QString ProgramTitle() {
  return u"Zentorin"_s;
}

QString LineAndSubject(const QString& line, const QString& subject) {
  return line + u"\r\n\r\n"_s + subject;
}

// Locks the editing surface for one run and leaves it as it was: a batch keeps it locked.
class BusyScope {
 public:
  explicit BusyScope(StatusBoard& board) : board_(board), wasBusy_(board.Busy()) {
    board_.SetBusy(true);
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  ~BusyScope() { board_.SetBusy(wasBusy_); }

 private:
  StatusBoard& board_;
  bool wasBusy_;
};

// Offers the cancel button and the progress bar while pages are fetched. A batch, which goes on
// after the crawl, keeps its cancel button.
class CrawlScope {
 public:
  CrawlScope(StatusBoard& board, bool batch)
      : board_(board), wasShown_(board.CancelShown()), wasEnabled_(batch && board.CancelEnabled()) {
    board_.SetCancelEnabled(true);
    board_.SetCancelShown(true);
    board_.SetProgress(0);
    board_.SetProgressShown(true);
  }
  CrawlScope(const CrawlScope&) = delete;
  CrawlScope& operator=(const CrawlScope&) = delete;
  ~CrawlScope() {
    board_.SetCancelEnabled(wasEnabled_);
    board_.SetCancelShown(wasShown_);
    board_.SetProgressShown(false);
    board_.SetProgress(0);
  }

 private:
  StatusBoard& board_;
  bool wasShown_;
  bool wasEnabled_;
};

}  // namespace

FileListGenerator::FileListGenerator(const CrawlContext& context) : context_(context) {
  StatusBoard& board = context_.board;
  const FileList& files = context_.files;
  const auto showCount = [&board, &files] {
    board.SetFileCount(files.Count() == 0 ? QString() : QString::number(files.Count()));
  };
  QObject::connect(&files, &FileList::Cleared, &board, showCount);
  QObject::connect(&files, &FileList::rowsInserted, &board, showCount);
  QObject::connect(&files, &FileList::rowsRemoved, &board, showCount);
  QObject::connect(&files, &FileList::modelReset, &board, showCount);
}

QCoro::Task<GenerateResult> FileListGenerator::Generate(bool listOnly) {
  lastRunFailed_ = false;
  context_.board.SetFile(QString());
  const BusyScope busy(context_.board);
  const bool accepted = co_await CheckInput();
  if (!accepted) co_return GenerateResult::Refused;
  // The list of a date-format job was built when the job was loaded.
  if (!context_.job.Flag(TargetUrlItem::Opt)) co_await BuildList(listOnly);
  context_.files.Flush();
  co_return GenerateResult::Finished;
}

QCoro::Task<bool> FileListGenerator::CheckInput() {
  const JobEditor& job = context_.job;
  if (context_.urlList.SelectedRow() < 0) {
    const bool nothingTyped =
        job[TargetUrlItem::Description].isEmpty() && job[TargetUrlItem::Root].isEmpty() &&
        job[TargetUrlItem::SubPattern].isEmpty() && job[TargetUrlItem::FilePattern].isEmpty();
    const QString text =
        nothingTyped ? u"URL リストを選択して下さい。"_s
                     : u"リストに追加（リストで右クリック→追加（下））後に入力して下さい。"_s;
    co_await Tell(text);
    context_.board.RequestFocus(FocusTarget::UrlList);
    co_return false;
  }
  if (job[TargetUrlItem::Root].isEmpty()) {
    const QString text = u"URL が空白です！"_s;
    co_await Tell(text);
    context_.board.RequestFocus(FocusTarget::RootUrl);
    co_return false;
  }
  co_return true;
}

QCoro::Task<void> FileListGenerator::BuildList(bool listOnly) {
  const JobEditor& job = context_.job;
  const QDateTime reference = context_.clock.Now();
  const QString rootUrl = ExpandDateTemplates(job[TargetUrlItem::Root], reference);
  context_.files.ClearFileList();
  if (job[TargetUrlItem::SubPattern].isEmpty() && job[TargetUrlItem::FilePattern].isEmpty()) {
    context_.files.Append(FileListRow::FromText(u"\t\t"_s + rootUrl));
    co_return;
  }
  Pattern subPages(job[TargetUrlItem::SubPattern]);
  Pattern files(FileExpression(job[TargetUrlItem::FilePattern]));
  const bool subPagesValid = co_await CheckPattern(subPages);
  if (!subPagesValid) co_return;
  if (!listOnly) {
    const bool filesValid = co_await CheckPattern(files);
    if (!filesValid) co_return;
  }
  {
    const CrawlScope scope(context_.board, context_.state.IsBatch());
    PageExtractor extractor(context_, files, reference);
    Crawler crawler(context_, subPages, listOnly ? nullptr : &extractor);
    co_await CrawlFrom(rootUrl, crawler);
  }
  // Expressions that were stopped on the way are named once, now that the list stands.
  co_await CheckPattern(subPages);
  if (!listOnly) co_await CheckPattern(files);
}

QCoro::Task<void> FileListGenerator::CrawlFrom(QString rootUrl, Crawler& crawler) {
  CrawlStart start;
  start.rootUrl = rootUrl;
  // The page in hand is named while the site has not answered yet.
  context_.board.SetFile(rootUrl);
  start.page = co_await context_.http.FetchPageText(rootUrl);
  context_.board.SetFile({});
  if (context_.state.CancelRequested()) co_return;
  if (start.page.status != 0) {
    lastRunFailed_ = true;
    const QString text =
        LineAndSubject(u"URL が見つかりません！"_s, context_.job[TargetUrlItem::Root]);
    co_await Tell(text);
    co_return;
  }
  const QString base = API_Web::BaseOfPage(start.page.text, rootUrl);
  context_.job.SetRootBase(base);
  start.startAddress = start.page.finalUrl.isEmpty() ? base : start.page.finalUrl;
  context_.files.ClearFileList();
  co_await crawler.Run(start);
}

QCoro::Task<bool> FileListGenerator::CheckPattern(const Pattern& pattern) {
  const QString fault = pattern.Fault();
  if (fault.isEmpty()) co_return true;
  lastRunFailed_ = true;
  const QString text = LineAndSubject(fault, context_.job[TargetUrlItem::Root]);
  const MessageBox box = MessageBox::Error(text);
  co_await context_.messages.Ask(box);
  co_return false;
}

QCoro::Task<void> FileListGenerator::Tell(QString text) {
  MessageBox box;
  box.title = ProgramTitle();
  box.text = text;
  co_await context_.messages.Ask(box);
}

}  // namespace zentorin
