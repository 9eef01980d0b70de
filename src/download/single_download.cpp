// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/activity.h"
#include "base/number_text.h"
#include "base/product_name.h"
#include "base/wait.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::seconds kConnectTimeout(60);
constexpr std::chrono::seconds kIdleTimeout(60);
constexpr double kMaxLength = 9e15;
constexpr std::chrono::milliseconds kPauseBeforeSecondTry(500);

HttpRequest FreshRequest(const QString& url, const CancelToken& cancel) {
  HttpRequest request;
  request.url = url;
  request.headers = ReloadHeaders();
  request.userAgent = ProductName().toLatin1();
  request.connectTimeout = kConnectTimeout;
  request.idleTimeout = kIdleTimeout;
  request.cancel = cancel;
  return request;
}

// Whether the same request may get its answer at another moment.
bool MayPass(HttpFailure failure, int httpStatus) {
  constexpr std::array kBusy = {408, 425, 429};
  constexpr int kFirstServerError = 500;
  if (failure != HttpFailure::None) return !IsFinal(failure);
  return httpStatus >= kFirstServerError || std::ranges::find(kBusy, httpStatus) != kBusy.end();
}

// 0 when the answer names none.
qint64 AnnouncedLength(const HttpHead& head) {
  const double length = NumericValue(QString::fromLatin1(head.Header("Content-Length")));
  return static_cast<qint64>(std::clamp(length, 0.0, kMaxLength));
}

}  // namespace

SingleDownload::SingleDownload(HttpEngine& engine, Activity& activity, CancelToken cancel,
                               LocalFile::WriteCall write)
    : engine_(engine), activity_(activity), cancel_(std::move(cancel)), write_(write) {}

void SingleDownload::Prepare(const QString& url) {
  if (cancel_.Cancelled() || alone_) return;
  prepared_ = {url, engine_.Open(FreshRequest(url, cancel_))};
}

std::unique_ptr<HttpTransfer> SingleDownload::TakePrepared(const QString& url) {
  std::optional<Prepared> prepared = std::exchange(prepared_, std::nullopt);
  return prepared && prepared->url == url ? std::move(prepared->transfer) : nullptr;
}

QCoro::Task<FileDownload> SingleDownload::DownloadToFile(QString url, QString path) {
  std::unique_ptr<HttpTransfer> transfer = TakePrepared(url);
  const bool wasEarly = transfer != nullptr;
  if (!wasEarly) transfer = engine_.Open(FreshRequest(url, cancel_));
  FileDownload result = co_await Receive(*transfer, url, path);
  if (!wasEarly || !result.maySucceedLater || cancel_.Cancelled()) co_return result;

  // A server that does not bear two requests at a time gets one from now on.
  alone_ = true;
  prepared_.reset();
  transfer.reset();
  const bool undisturbed = co_await SleepUnlessCancelled(cancel_, kPauseBeforeSecondTry);
  if (!undisturbed) co_return result;
  transfer = engine_.Open(FreshRequest(url, cancel_));
  // No byte of the first try may stand behind a shorter second one.
  if (result.spoiled) DeleteLocalFile(path);
  result = co_await Receive(*transfer, url, path);
  co_return result;
}

QCoro::Task<FileDownload> SingleDownload::Receive(HttpTransfer& transfer, QString url,
                                                  QString path) {
  FileDownload result;
  result.code = RowCode::Cancelled;
  const HttpHead head = co_await transfer.Head();
  if (cancel_.Cancelled()) co_return result;
  if (head.status != kHttpOk) {
    result.code = RowCode::Fatal;
    result.maySucceedLater = MayPass(transfer.Failure(), head.status);
    const QString answered = head.finalUrl.isEmpty() ? url : head.finalUrl;
    result.reason = MissReasonOf(transfer.Failure(), head.status, answered);
    co_return result;
  }
  LocalFile file(write_);
  const Outcome opened = file.Open(path);
  result.code = opened.error;
  if (!opened.Ok()) co_return result;
  const qint64 length = AnnouncedLength(head);
  qint64 written = 0;
  result.code = co_await CopyBody(transfer, file, length, written);
  if (result.code == RowCode::Complete) result.code = file.Keep();
  if (transfer.Failure() != HttpFailure::None && !cancel_.Cancelled()) {
    result.maySucceedLater = MayPass(transfer.Failure(), head.status);
    const BytesReceived bytes{.received = written, .announced = length};
    result.reason = MissReasonOf(transfer.Failure(), head.status, head.finalUrl, bytes);
  }
  result.spoiled = result.code != RowCode::Complete && file.HasChangedOldFile();
  co_return result;
}

// Block by block, so that a file of any size takes the memory of one.
QCoro::Task<RowCode> SingleDownload::CopyBody(HttpTransfer& transfer, LocalFile& file,
                                              qint64 length, qint64& written) {
  while (true) {
    const QByteArray block = co_await transfer.NextBlock();
    if (cancel_.Cancelled()) co_return RowCode::Cancelled;
    if (block.isEmpty()) break;
    const Outcome outcome = file.Write(block);
    if (!outcome.Ok()) co_return outcome.error;
    written += block.size();
    activity_.SetBytes(written, length);
  }
  // What broke off is not complete, whatever was written.
  if (transfer.Failure() != HttpFailure::None) co_return RunTimeError::InputOutput;
  co_return RowCode::Complete;
}

QCoro::Task<void> SingleDownload::HTTPDownloadFile(QString url, QString path) {
  HttpRequest request = FreshRequest(url, cancel_);
  request.maxBodyBytes = kMaxWholeBodyBytes;
  HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
  const bool whole = answer.head.status != 0 && answer.failure == HttpFailure::None;
  wholeBody_ = std::move(answer.body);
  if (!whole || answer.head.rawHeaders.contains("404 Not Found")) co_return;
  LocalFile file(write_);
  if (file.Open(path).Ok() && file.Write(wholeBody_).Ok()) static_cast<void>(file.Keep());
}

}  // namespace zentorin
