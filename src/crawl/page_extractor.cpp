// SPDX-License-Identifier: MIT
#include "crawl/page_extractor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/activity.h"
#include "base/display_clock.h"
#include "base/number_text.h"
#include "crawl/file_list.h"
#include "crawl/file_list_generator.h"
#include "crawl/tag_splitter.h"
#include "jobs/date_text.h"
#include "jobs/job_editor.h"
#include "net/api_web.h"
#include "net/character_references.h"
#include "net/miss_reason.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kMsecsPerDay = 86'400'000;
// Longer windows reach back before every date that a server can name.
constexpr double kMaxWindowDays = 1'000'000;
constexpr double kBytesPerKilobyte = 1000;
constexpr double kMaxKilobytes = 9e15;
constexpr int kSizeWidth = 6;

// The link inside a match: attribute names that the expression caught with it are removed, then a
// quote that led it, with the one that closes it.
QString LinkOf(QString candidate) {
  candidate.remove("href="_L1, Qt::CaseInsensitive);
  candidate.remove("url="_L1, Qt::CaseInsensitive);
  candidate.remove("<guid>"_L1, Qt::CaseInsensitive);
  candidate = TrimBlanks(candidate);
  if (candidate.startsWith(u'"')) {
    candidate.remove(0, 1);
    if (candidate.endsWith(u'"')) candidate.chop(1);
  }
  return candidate;
}

QString SizeText(const QByteArray& announced) {
  const QString bytes = TrimBlanks(QString::fromLatin1(announced));
  if (bytes.isEmpty()) return QLatin1StringView(FileListRow::kNoFileSize);
  const double kilobytes = std::ceil(NumericValue(bytes) / kBytesPerKilobyte);
  const auto shown = static_cast<qint64>(std::clamp(kilobytes, -kMaxKilobytes, kMaxKilobytes));
  return PadLeft(GroupedNumber(shown), kSizeWidth);
}

}  // namespace

QString FileExpression(const QString& filePattern) {
  const QString keyword = filePattern.toLower();
  // All four of these search for ".mp3": this program's rule.
  for (const char* fixed : {".mp3", ".csv", ".pdf", ".asx"}) {
    if (keyword == QLatin1StringView(fixed)) {
      return uR"re(((url=|href=)".+?\.mp3"|(url=|href=)'+?\.mp3'))re"_s;
    }
  }
  for (const char* image : {".gif", ".jpg", ".jpeg", ".bmp"}) {
    if (keyword == QLatin1StringView(image)) {
      return uR"re(< *img +src=(\x22*[^<>"]+?\)re"_s + keyword + uR"re(\x22* *)[^<>]*?>)re"_s;
    }
  }
  return filePattern;
}

QString BaseDirectoryOf(const FetchedPage& page, const QString& asked) {
  return API_Web::BaseDirectoryOf(page.text, page.finalUrl.isEmpty() ? asked : page.finalUrl);
}

PageExtractor::PageExtractor(const CrawlContext& context, Pattern& files, QDateTime reference,
                             CancelToken cancel)
    : context_(context),
      files_(files),
      reference_(std::move(reference)),
      cancel_(std::move(cancel)) {}

QCoro::Task<void> PageExtractor::Extract(QString pageUrl, FetchedPage page) {
  Source source;
  source.url = pageUrl;
  source.base = BaseDirectoryOf(page, pageUrl);
  TagSplitter tags(page.text);
  for (QStringView tag = tags.Next(); !tag.isNull() && !cancel_.Cancelled(); tag = tags.Next()) {
    const QStringList candidates = files_.Candidates(tag);
    for (const QString& candidate : candidates) {
      if (cancel_.Cancelled()) break;
      const QString link = LinkOf(candidate);
      if (!link.isEmpty() && !links_.AnyEndsWith(link)) co_await TakeCandidate(source, link);
      if (slice_.Over()) co_await slice_.Rest();
    }
    if (slice_.Over()) co_await slice_.Rest();
  }
  while (!questions_.empty()) co_await AnswerFirst(source);
}

// Files are asked for their headers some rows ahead; the rows come in the order of the page.
QCoro::Task<void> PageExtractor::TakeCandidate(const Source& source, QString candidate) {
  const QString address = API_Web::AddressOf(source.base, candidate);
  if (!context_.job.Flag(TargetUrlItem::DispModify)) {
    AddRow(source, candidate, address, {}, {});
    co_return;
  }
  // Whether the link is new hangs on a file that has not answered yet.
  while (IsAskedFor(candidate)) co_await AnswerFirst(source);
  if (cancel_.Cancelled() || links_.AnyEndsWith(candidate)) co_return;
  questions_.push_back({candidate, address, context_.http.QueryHead(address, cancel_)});
  const auto limit = static_cast<size_t>(context_.choices.connectionsPerHost);
  while (questions_.size() > limit) co_await AnswerFirst(source);
}

bool PageExtractor::IsAskedFor(const QString& link) const {
  return std::ranges::any_of(questions_, [&link](const Question& question) {
    return question.link.endsWith(link, Qt::CaseInsensitive);
  });
}

QCoro::Task<void> PageExtractor::AnswerFirst(const Source& source) {
  Question question = std::move(questions_.front());
  questions_.pop_front();
  const HttpAnswer answer = co_await question.answer;
  if (cancel_.Cancelled()) co_return;
  const MissReason why = MissReasonOf(answer.failure, answer.head.status, question.address);
  const MissReason unknown = why.Of(u"更新日時とサイズ"_s);
  AddRow(source, question.link, question.address, answer.head, unknown.text);
}

// Unless the file is outside the root or the date window. `unknown`: why date and size are.
void PageExtractor::AddRow(const Source& source, QString link, const QString& address,
                           const HttpHead& head, const QString& unknown) {
  FileDate date = ParseHttpDate(QString::fromLatin1(head.Header("Last-Modified")));
  if (date) date = context_.clock.Shown(*date);
  if (!InDateWindow(date) || !UnderRoot(link)) return;
  link.remove(u'\\');
  links_.Add(link);
  FileListRow row;
  row.Set(FileListRow::Date, date ? DisplayClock::TextOf(*date) : u"-"_s);
  row.Set(FileListRow::Size, SizeText(head.Header("Content-Length")));
  row.Set(FileListRow::Link, link);
  row.Set(FileListRow::BaseDir, source.base);
  row.Set(FileListRow::Parent, source.url);
  row.Set(FileListRow::Address, address);
  context_.files.Append(row, true);
  context_.files.SetReason(context_.files.Count() - 1, unknown);
  context_.activity.SetFound(++rowCount_);
}

// A file of unknown date is always in the window.
bool PageExtractor::InDateWindow(const FileDate& date) const {
  const QString days = TrimBlanks(context_.job[TargetUrlItem::Date]);
  if (!date || !context_.job.Flag(TargetUrlItem::Modify) || days.isEmpty()) return true;
  const double back = std::clamp(NumericValue(days), -kMaxWindowDays, kMaxWindowDays);
  return reference_.addMSecs(-std::llround(back * kMsecsPerDay)) <= *date;
}

// Relative links are always kept; an absolute one only when its directory is a part of the start
// address, so that one in a folder below the root is not.
bool PageExtractor::UnderRoot(const QString& candidate) const {
  if (!context_.job.Flag(TargetUrlItem::OnlyUnderRoot)) return true;
  const QString link = DecodeReferences(candidate);
  if (!link.startsWith("http"_L1, Qt::CaseInsensitive)) return true;
  return startAddress_.contains(API_Web::DirectoryOf(link), Qt::CaseInsensitive);
}

}  // namespace zentorin
