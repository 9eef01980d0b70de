// SPDX-License-Identifier: MIT
#include "crawl/crawler.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/activity.h"
#include "base/file_names.h"
#include "base/number_text.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "crawl/tag_splitter.h"
#include "jobs/job_editor.h"
#include "net/api_web.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Page texts on the way from the root are kept for the extractor up to this size in all (two bytes
// a character); pages beyond it are fetched once more when their turn comes.
constexpr qsizetype kMaxHeldCharacters = 32LL * 1024 * 1024;

constexpr qsizetype kMaxLinkLength = 256;

constexpr std::array kFileEndings = {".gif", ".png", ".jpg", ".bmp", ".csv", ".pdf", ".xls",
                                     ".doc", ".mp3", ".wma", ".wmv", ".lzh", ".zip", ".tar"};

bool IsFile(const QString& link) {
  return std::ranges::any_of(kFileEndings, [&link](const char* ending) {
    return link.endsWith(QLatin1StringView(ending), Qt::CaseInsensitive);
  });
}

// The page that a match of the sub-page pattern leads to, as the page writes it: without quotes,
// blanks and fragment. Empty when it leads to a file, is too long or is nothing but a fragment.
QString PageLinkOf(const QString& candidate) {
  QString link = API_Web::StripQuotes(candidate, true);
  if (IsFile(link) || link.size() > kMaxLinkLength) return {};
  link = TrimBlanks(link);
  if (link.startsWith(u'"') && !link.endsWith(u'"')) link.remove(0, 1);
  const qsizetype fragment = link.indexOf(u'#');
  return fragment < 0 ? link : link.left(fragment);
}

}  // namespace

Crawler::Crawler(const CrawlContext& context, Pattern& subPages, PageExtractor* extractor,
                 CancelToken cancel)
    : context_(context), subPages_(subPages), extractor_(extractor), cancel_(std::move(cancel)) {}

QCoro::Task<MissCounts> Crawler::Run(CrawlStart start) {
  startAddress_ = start.startAddress;
  if (extractor_ != nullptr) extractor_->SetStartAddress(startAddress_);
  Record root;
  root.link = startAddress_;
  root.baseDir = API_Web::DirectoryOf(startAddress_);
  root.address = startAddress_;
  FetchedPage page = start.page;
  if (page.finalUrl != startAddress_) page = FetchedPage();
  co_await Take(root, page);
  if (cancel_.Cancelled()) co_return missing_;
  if (!subPages_.Expression().isEmpty()) {
    co_await WalkFrom(start.rootUrl, start.page);
    co_return missing_;
  }
  // Without a pattern for sub-pages the root is taken a second time, now under the address that
  // was asked for; its files are known by then.
  Record alone;
  alone.link = start.rootUrl;
  alone.baseDir = API_Web::DirectoryOf(API_Web::BaseOfPage(start.page.text, start.rootUrl));
  alone.address = API_Web::Resolve(alone.baseDir, start.rootUrl);
  co_await Take(alone, start.page);
  co_return missing_;
}

QCoro::Task<void> Crawler::WalkFrom(QString rootUrl, FetchedPage page) {
  if (context_.job.Depth() < 1) co_return;
  Record root;
  root.address = rootUrl;
  co_await Enter(root, page);
  while (!cancel_.Cancelled()) {
    Frame& frame = path_.back();
    if (frame.next < frame.links.size()) {
      const Link link = std::move(frame.links[frame.next++]);
      co_await Follow(link);
    } else if (path_.size() > 1) {
      co_await Leave();
    } else {
      break;
    }
    if (slice_.Over()) co_await slice_.Rest();
  }
  path_.clear();
}

QCoro::Task<void> Crawler::Follow(Link link) {
  const Frame& frame = path_.back();
  if (OutsideRoot(link.text, frame.baseDir)) co_return;
  Record record;
  record.address = API_Web::Resolve(frame.baseDir, link.text);
  if (visited_.AnyEndsWith(record.address)) co_return;
  visited_.Add(record.address);
  record.link = link.text;
  record.baseDir = frame.baseDir;
  record.parent = frame.record.address;
  const auto depth = static_cast<int>(path_.size());
  if (depth == 1) {
    context_.activity.SetShare(static_cast<double>(link.tag) / static_cast<double>(frame.tagCount));
    context_.activity.SetAddress(link.text);
  }
  if (context_.job.Depth() <= depth) {
    const FetchedPage unfetched;
    co_await Take(record, unfetched);
    co_return;
  }
  const FetchedPage page = co_await context_.http.FetchPageText(record.address, cancel_);
  if (cancel_.Cancelled()) co_return;
  if (page.Ok()) {
    co_await Enter(record, page);
    co_return;
  }
  const MissReason missing = NoteMissing(record.address, page);
  if (extractor_ == nullptr) ListPage(record, missing.text);
}

// The links are collected before the first is followed, so that the text of a page is needed only
// once more, by the extractor.
QCoro::Task<void> Crawler::Enter(Record record, FetchedPage page) {
  Frame frame;
  frame.record = record;
  frame.baseDir = API_Web::DirectoryOf(API_Web::BaseOfPage(page.text, record.address));
  frame.page = page;
  co_await CollectLinks(frame);
  if (heldCharacters_ + page.text.size() > kMaxHeldCharacters) frame.page = FetchedPage();
  heldCharacters_ += frame.page.text.size();
  path_.push_back(std::move(frame));
}

QCoro::Task<void> Crawler::CollectLinks(Frame& frame) {
  TagSplitter tags(frame.page.text);
  for (QStringView tag = tags.Next(); !tag.isNull(); tag = tags.Next()) {
    const QStringList candidates = subPages_.Candidates(tag);
    for (const QString& candidate : candidates) {
      const QString link = PageLinkOf(candidate);
      if (!link.isEmpty()) frame.links.push_back({link, frame.tagCount});
    }
    ++frame.tagCount;
    if (cancel_.Cancelled()) co_return;
    if (slice_.Over()) co_await slice_.Rest();
  }
}

QCoro::Task<void> Crawler::Leave() {
  const Frame frame = std::move(path_.back());
  path_.pop_back();
  heldCharacters_ -= frame.page.text.size();
  co_await Take(frame.record, frame.page);
}

// `page` is fetched here when it is not yet. A page that cannot be fetched is passed over.
QCoro::Task<void> Crawler::Take(Record record, FetchedPage page) {
  if (extractor_ == nullptr) {
    ListPage(record);
    co_return;
  }
  if (!page.Ok()) page = co_await context_.http.FetchPageText(record.address, cancel_);
  if (page.Ok()) {
    co_await extractor_->Extract(record.address, page);
  } else {
    NoteMissing(record.address, page);
  }
}

// A page that its server does not know is passed over in silence.
MissReason Crawler::NoteMissing(const QString& address, const FetchedPage& page) {
  const MissReason why = MissReasonOf(page, address);
  missing_.Add(why.kind);
  if (IsFailure(why.kind)) {
    const QString shown = CutForDisplay(address) + u"（%1）"_s.arg(CutForDisplay(why.text));
    context_.activity.Say(u"ページを取得できません: "_s + shown, Tone::Fault);
  }
  return why;
}

// `missing`: why it could not be had.
void Crawler::ListPage(const Record& record, const QString& missing) {
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

// Only an absolute link can lead outside, and only from a page whose base directory is not itself
// a part of the start address.
bool Crawler::OutsideRoot(const QString& link, const QString& baseDir) const {
  return context_.job.Flag(TargetUrlItem::OnlyUnderRoot) && !startAddress_.contains(baseDir) &&
         !link.contains(startAddress_) && link.contains("://"_L1);
}

}  // namespace zentorin
