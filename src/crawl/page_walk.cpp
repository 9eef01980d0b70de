// SPDX-License-Identifier: MIT
#include "crawl/page_walk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/number_text.h"
#include "base/wait.h"
#include "crawl/file_list_generator.h"
#include "crawl/page_extractor.h"
#include "crawl/tag_splitter.h"
#include "jobs/job_editor.h"
#include "net/api_web.h"
#include "net/character_references.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Page texts on the way from the root are kept for the extractor up to this size in all (two bytes
// a character); pages beyond it are fetched once more when their turn comes.
constexpr qsizetype kMaxHeldCharacters = 32LL * 1024 * 1024;
// No further page is asked for while so much waits to be taken.
constexpr qsizetype kMaxHeldAhead = 16LL * 1024 * 1024;
constexpr size_t kMaxStepsAhead = 100;

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
  return WithoutFragment(link);
}

qsizetype BytesOf(const FetchedPage& page) {
  return page.text.size() * qsizetype(sizeof(QChar));
}

}  // namespace

PageWalk::PageWalk(const CrawlContext& context, Pattern& subPages, QString startAddress,
                   bool fetchesLeaves, CancelToken cancel)
    : context_(context),
      subPages_(subPages),
      startAddress_(std::move(startAddress)),
      fetchesLeaves_(fetchesLeaves),
      sharesConnections_(context.job.Flag(TargetUrlItem::DispModify)),
      cancel_(std::move(cancel)) {}

void PageWalk::Start(const QString& rootUrl, const FetchedPage& page) {
  walk_ = Walk(rootUrl, page);
}

QCoro::Task<std::optional<PageWalk::Step>> PageWalk::Next() {
  while (steps_.empty() && !ended_) {
    AsyncEvent::Waiter step = stepCame_.Wait();
    co_await step;
  }
  std::optional<Step> step;
  if (steps_.empty()) {
    co_await walk_;
    co_return step;
  }
  step = std::move(steps_.front());
  steps_.pop_front();
  if (!step->coming) heldAhead_ -= BytesOf(step->page);
  roomCame_.Set();
  co_return step;
}

QCoro::Task<FetchedPage> PageWalk::PageOf(Step& step) {
  if (!step.coming) co_return step.page;
  const FetchedPage page = co_await step.coming->Take();
  roomCame_.Set();
  co_return page;
}

QCoro::Task<void> PageWalk::Walk(QString rootUrl, FetchedPage page) {
  PageRecord root;
  root.address = rootUrl;
  if (context_.job.Depth() >= 1) co_await Enter(root, page);
  while (!cancel_.Cancelled() && !path_.empty()) {
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
  // Pages that turned out to be known under another address.
  for (const auto& [address, coming] : guessed_) co_await coming->Take();
  ended_ = true;
  stepCame_.Set();
}

QCoro::Task<void> PageWalk::Follow(Link link) {
  const Frame& frame = path_.back();
  if (OutsideRoot(DecodeReferences(link.text), frame.baseDir)) co_return;
  Step step;
  step.record.address = API_Web::AddressOf(frame.baseDir, link.text);
  if (IsVisited(step.record.address)) co_return;
  visited_.Add(step.record.address);
  visitedAddresses_.insert(step.record.address);
  step.record.link = link.text;
  step.record.baseDir = frame.baseDir;
  step.record.parent = frame.record.address;
  const auto depth = static_cast<int>(path_.size());
  if (depth == 1) {
    Step begin;
    begin.kind = Step::Kind::Begin;
    begin.record = step.record;
    begin.share = static_cast<double>(link.tag) / static_cast<double>(frame.tagCount);
    Emit(std::move(begin));
  }
  co_await WaitForRoom();
  if (cancel_.Cancelled()) co_return;
  if (context_.job.Depth() <= depth) {
    if (fetchesLeaves_) step.coming = FetchAhead(step.record.address);
    Emit(std::move(step));
    co_return;
  }
  const std::unique_ptr<Coming> coming = FetchAhead(step.record.address);
  Guess();
  const FetchedPage page = co_await coming->Take();
  if (cancel_.Cancelled()) co_return;
  if (page.Ok()) {
    co_await Enter(step.record, page);
    co_return;
  }
  step.kind = Step::Kind::Missing;
  step.page = page;
  Emit(std::move(step));
}

// The links are collected before the first is followed, so that the text of a page is needed only
// once more, by the extractor.
QCoro::Task<void> PageWalk::Enter(PageRecord record, FetchedPage page) {
  Frame frame;
  frame.record = record;
  frame.baseDir = BaseDirectoryOf(page, record.address);
  frame.page = page;
  co_await CollectLinks(frame);
  if (heldCharacters_ + page.text.size() > kMaxHeldCharacters) frame.page = FetchedPage();
  heldCharacters_ += frame.page.text.size();
  path_.push_back(std::move(frame));
}

QCoro::Task<void> PageWalk::CollectLinks(Frame& frame) {
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

QCoro::Task<void> PageWalk::Leave() {
  Frame frame = std::move(path_.back());
  path_.pop_back();
  heldCharacters_ -= frame.page.text.size();
  co_await WaitForRoom();
  if (cancel_.Cancelled()) co_return;
  Step step;
  step.record = std::move(frame.record);
  if (frame.page.Ok()) {
    step.page = std::move(frame.page);
    heldAhead_ += BytesOf(step.page);
  } else if (fetchesLeaves_) {
    step.coming = FetchAhead(step.record.address);
  }
  Emit(std::move(step));
}

QCoro::Task<void> PageWalk::WaitForRoom() {
  const auto isFull = [this] {
    const bool holdsMuch = heldAhead_ >= kMaxHeldAhead || steps_.size() >= kMaxStepsAhead;
    // Steps are taken and pages come; nothing else makes room.
    return (holdsMuch && !steps_.empty()) || onTheirWay_ >= MostOnTheirWay();
  };
  while (!cancel_.Cancelled() && isFull()) {
    AsyncEvent::Waiter room = roomCame_.Wait();
    co_await room;
  }
}

bool PageWalk::IsVisited(const QString& address) {
  if (!visited_.AnyEndsWith(address)) return false;
  if (!visitedAddresses_.contains(address)) hasVariants_ = true;
  return true;
}

// Asks for the next links of the page in hand while it is open what lies below the present one.
// They will be come to, here or further down, unless another address counts as theirs.
void PageWalk::Guess() {
  constexpr qsizetype kEnoughPages = 20;
  if (hasVariants_ || visitedAddresses_.size() < kEnoughPages) return;
  const Frame& frame = path_.back();
  for (size_t i = frame.next; i < frame.links.size(); ++i) {
    if (onTheirWay_ >= MostOnTheirWay() || heldAhead_ >= kMaxHeldAhead) return;
    const QString& link = frame.links[i].text;
    const QString address = API_Web::AddressOf(frame.baseDir, link);
    if (guessed_.contains(address) || OutsideRoot(DecodeReferences(link), frame.baseDir)) continue;
    if (!IsVisited(address)) guessed_.emplace(address, FetchAhead(address));
  }
}

int PageWalk::MostOnTheirWay() const {
  return sharesConnections_ ? 1 : context_.choices.connectionsPerHost;
}

std::unique_ptr<PageWalk::Coming> PageWalk::FetchAhead(const QString& address) {
  if (auto guessed = guessed_.extract(address)) return std::move(guessed.mapped());
  auto coming = std::make_unique<Coming>(*this);
  coming->page = coming->Fetch(address);
  return coming;
}

QCoro::Task<FetchedPage> PageWalk::Coming::Fetch(QString address) {
  ++walk_.onTheirWay_;
  const FetchedPage fetched =
      co_await walk_.context_.http.FetchPageText(address, walk_.cancel_, this);
  --walk_.onTheirWay_;
  // From now on the text is held, not the bytes.
  walk_.heldAhead_ += BytesOf(fetched) - held_;
  held_ = BytesOf(fetched);
  walk_.roomCame_.Set();
  co_return fetched;
}

QCoro::Task<void> PageWalk::Coming::Pass(qsizetype bytes) {
  held_ += bytes;
  walk_.heldAhead_ += bytes;
  // Never a stop: somebody may wait for this page's connection.
  constexpr std::chrono::milliseconds kPause(500);
  const bool isPressing = isTurn_ || walk_.sharesConnections_;
  if (isPressing || walk_.heldAhead_ < kMaxHeldAhead) co_return;
  co_await SleepUnlessCancelled(walk_.cancel_, kPause);
}

QCoro::Task<FetchedPage> PageWalk::Coming::Take() {
  isTurn_ = true;
  const FetchedPage taken = co_await page;
  walk_.heldAhead_ -= held_;
  co_return taken;
}

void PageWalk::Emit(Step step) {
  steps_.push_back(std::move(step));
  stepCame_.Set();
}

// Only an absolute link can lead outside, and only from a page whose base directory is not itself
// a part of the start address.
bool PageWalk::OutsideRoot(const QString& link, const QString& baseDir) const {
  return context_.job.Flag(TargetUrlItem::OnlyUnderRoot) && !startAddress_.contains(baseDir) &&
         !link.contains(startAddress_) && link.contains("://"_L1);
}

}  // namespace zentorin
