// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <utility>

#include "base/activity.h"
#include "base/product_name.h"
#include "jobs/date_text.h"
#include "net/host_book.h"
#include "net/my_xml_http_request.h"
#include "net/second_chances.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds kConnectTimeout(20);
constexpr std::chrono::seconds kHeadTimeout(60);
constexpr std::chrono::seconds kIdleTimeout(60);
constexpr std::chrono::minutes kSlowTime(5);
constexpr size_t kMaxEarly = HostBook::kMaxConnections - 1;
constexpr int kPartialContent = 206;
constexpr int kRangeNotSatisfiable = 416;

}  // namespace

SingleDownload::SingleDownload(HttpEngine& engine, Activity& activity, const FetchChoices& choices,
                               CancelToken cancel, LocalFile::WriteCall write)
    : engine_(engine),
      activity_(activity),
      choices_(choices),
      cancel_(std::move(cancel)),
      write_(write),
      speed_(choices.topSpeed),
      maxEarly_(choices.connectionsPerHost > 1 ? kMaxEarly : 0) {}

HttpRequest SingleDownload::RequestFor(const QString& url) const {
  HttpRequest request;
  request.url = url;
  request.headers = ReloadHeaders();
  request.userAgent = ProductName().toLatin1();
  request.connectTimeout = kConnectTimeout;
  request.headTimeout = kHeadTimeout;
  request.idleTimeout = kIdleTimeout;
  request.slowTime = kSlowTime;
  request.useSystemProxy = choices_.proxyForFiles;
  request.cancel = cancel_;
  return request;
}

bool SingleDownload::AskEarly(const QString& url) {
  if (early_.size() >= maxEarly_ || cancel_.Cancelled()) return false;
  if (url == inHand_ || early_.contains(url)) return true;
  HttpRequest request = RequestFor(url);
  request.early = true;
  early_.emplace(url, engine_.Open(std::move(request)));
  return true;
}

std::unique_ptr<HttpTransfer> SingleDownload::TakeEarly(const QString& url) {
  auto taken = early_.extract(url);
  if (!taken) return nullptr;
  taken.mapped()->TakeTurn();
  return std::move(taken.mapped());
}

void SingleDownload::UseFewerDescriptors() {
  maxEarly_ /= 2;
  early_.clear();
}

QCoro::Task<FileDownload> SingleDownload::DownloadToFile(QString url, QString path, int folder) {
  inHand_ = url;
  Target target{.path = path, .folder = folder, .file = LocalFile(write_), .point = {}};
  SecondChances chances(choices_, activity_, cancel_);
  std::unique_ptr<HttpTransfer> transfer = TakeEarly(url);
  bool wasEarly = transfer != nullptr;
  if (!wasEarly) transfer = engine_.Open(RequestFor(url));
  Try attempt = co_await Receive(*transfer, url, target);
  while (!cancel_.Cancelled()) {
    const bool asksAnew = wasEarly && (attempt.mayPass || attempt.failure == HttpFailure::HostDown);
    if (!asksAnew && !(attempt.mayPass && chances.Left())) break;
    transfer.reset();
    if (!asksAnew) {
      const bool undisturbed = co_await chances.Pause();
      if (!undisturbed) break;
    }
    wasEarly = false;
    HttpRequest request = RequestFor(url);
    // One that only had to make way does not send others away in turn.
    request.alone = attempt.failure != HttpFailure::Dropped;
    target.point.AskForRest(request);
    transfer = engine_.Open(std::move(request));
    const Try last = std::move(attempt);
    attempt = co_await Receive(*transfer, url, target);
    // That its host is given up meanwhile is no news.
    const bool isNews = last.failure == HttpFailure::Dropped || last.failure == HttpFailure::None;
    if (attempt.failure == HttpFailure::HostDown && !isNews) {
      attempt.result.reason = last.result.reason;
    }
  }
  FileDownload result = attempt.result;
  if (cancel_.Cancelled() && result.code != RowCode::Complete) result.code = RowCode::Cancelled;
  if (IsFailure(result.reason.kind) && chances.Used() > 0) {
    result.reason.text += u"、%1 回再試行"_s.arg(chances.Used());
  }
  result.spoiled = result.code != RowCode::Complete && target.file.HasChangedOldFile();
  result.bytes = target.file.Bytes();
  co_return result;
}

QCoro::Task<SingleDownload::Try> SingleDownload::Receive(HttpTransfer& transfer, QString url,
                                                         Target& target) {
  LocalFile& file = target.file;
  ResumePoint& point = target.point;
  Try attempt;
  attempt.result.code = RowCode::Cancelled;
  const HttpHead head = co_await transfer.Head();
  if (cancel_.Cancelled()) co_return attempt;
  const QString answered = head.finalUrl.isEmpty() ? url : head.finalUrl;
  const bool continues = head.status == kPartialContent && point.ContinueBy(head);
  if (head.status != kHttpOk && !continues) {
    const HttpFailure failure = transfer.Failure();
    NoteRefusal(attempt, failure, head.status, MissReasonOf(failure, head.status, answered));
    attempt.result.code = file.IsOpen() ? RowCode(RunTimeError::InputOutput) : RowCode::Fatal;
    const bool isRangeFault = head.status == kPartialContent || head.status == kRangeNotSatisfiable;
    if (isRangeFault && point.Written() > 0) {
      attempt.mayPass = true;  // from the start again
      point = ResumePoint();
    }
    co_return attempt;
  }
  const Outcome placed = continues ? Outcome() : Place(head, target);
  if (!placed.Ok()) {
    NoteFault(attempt, placed);
    co_return attempt;
  }
  const Outcome copied = co_await CopyBody(transfer, target);
  if (cancel_.Cancelled()) co_return attempt;
  // What broke off is not complete, whatever was written.
  HttpFailure failure = transfer.Failure();
  if (failure == HttpFailure::None && !point.IsWhole()) failure = HttpFailure::CutOff;
  if (!copied.Ok()) {
    NoteFault(attempt, copied);
  } else if (failure != HttpFailure::None) {
    attempt.result.code = RunTimeError::InputOutput;
    const BytesReceived bytes{.received = point.Written(), .announced = point.Length()};
    NoteRefusal(attempt, failure, head.status, MissReasonOf(failure, head.status, answered, bytes));
  } else {
    attempt.result.code = file.Keep();
  }
  co_return attempt;
}

// By the network or the server.
void SingleDownload::NoteRefusal(Try& attempt, HttpFailure failure, int status,
                                 const MissReason& reason) {
  attempt.failure = failure;
  attempt.mayPass = MayPass(failure, status);
  attempt.result.reason = reason;
  if (failure == HttpFailure::NoDescriptor) UseFewerDescriptors();
}

// By this machine.
void SingleDownload::NoteFault(Try& attempt, const Outcome& fault) {
  attempt.result.code = fault.error;
  if (fault.error != RunTimeError::TooManyFiles) return;
  attempt.mayPass = true;
  attempt.result.reason = {MissKind::NotSaved, fault.message};
  UseFewerDescriptors();
}

// A whole answer begins: at the start of the file, whatever an earlier try has brought.
Outcome SingleDownload::Place(const HttpHead& head, Target& target) const {
  LocalFile& file = target.file;
  target.point = ResumePoint(head);
  const Outcome outcome = file.IsOpen() ? file.StartOver() : file.Open(target.path, target.folder);
  if (choices_.keepServerDate) {
    file.SetDate(ParseHttpDate(QString::fromLatin1(head.Header("Last-Modified"))));
  }
  return outcome;
}

// Block by block, so that a file of any size takes the memory of one.
QCoro::Task<Outcome> SingleDownload::CopyBody(HttpTransfer& transfer, Target& target) {
  while (true) {
    const QByteArray block = co_await transfer.NextBlock();
    if (cancel_.Cancelled() || block.isEmpty()) co_return Outcome();
    const Outcome written = target.file.Write(block);
    if (!written.Ok()) co_return written;
    target.point.Add(block.size());
    activity_.SetBytes(target.point.Written(), target.point.Length());
    if (choices_.topSpeed > 0) co_await speed_.Spend(block.size(), cancel_);
  }
}

QCoro::Task<void> SingleDownload::HTTPDownloadFile(QString url, QString path) {
  HttpRequest request = RequestFor(url);
  request.maxBodyBytes = kMaxWholeBodyBytes;
  HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
  const bool whole = answer.head.status != 0 && answer.failure == HttpFailure::None;
  wholeBody_ = std::move(answer.body);
  if (!whole || answer.head.rawHeaders.contains("404 Not Found")) co_return;
  LocalFile file(write_);
  if (file.Open(path).Ok() && file.Write(wholeBody_).Ok()) static_cast<void>(file.Keep());
}

}  // namespace zentorin
