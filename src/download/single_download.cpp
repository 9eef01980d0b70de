// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <algorithm>
#include <utility>

#include "base/activity.h"
#include "base/number_text.h"
#include "base/product_name.h"
#include "net/http_engine.h"
#include "net/my_xml_http_request.h"

namespace zentorin {
namespace {

constexpr std::chrono::seconds kConnectTimeout(60);
constexpr std::chrono::seconds kIdleTimeout(60);
constexpr double kMaxLength = 9e15;

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

}  // namespace

SingleDownload::SingleDownload(HttpEngine& engine, MyXMLHttpRequest& http, Activity& activity,
                               CancelToken cancel, LocalFile::WriteCall write)
    : engine_(engine),
      http_(http),
      activity_(activity),
      cancel_(std::move(cancel)),
      write_(write) {}

void SingleDownload::Prepare(const QString& url) {
  if (!cancel_.Cancelled()) prepared_ = Send(url);
}

// The length query goes out first and the request right behind it: on a slow line a file then costs
// the round trips of one of them.
SingleDownload::Requests SingleDownload::Send(const QString& url) {
  Requests requests;
  requests.url = url;
  requests.length = http_.QueryHeader(url, HeaderSelector::ContentLength, cancel_);
  requests.transfer = engine_.Open(FreshRequest(url, cancel_));
  return requests;
}

SingleDownload::Requests SingleDownload::TakePrepared(const QString& url) {
  std::optional<Requests> prepared = std::exchange(prepared_, std::nullopt);
  if (prepared && prepared->url == url) return std::move(*prepared);
  return Send(url);
}

QCoro::Task<FileDownload> SingleDownload::DownloadToFile(QString url, QString path) {
  const Requests requests = TakePrepared(url);
  const QString length = co_await requests.length;
  FileDownload result{.code = RowCode::Cancelled};
  if (cancel_.Cancelled()) co_return result;

  const HttpHead head = co_await requests.transfer->Head();
  if (cancel_.Cancelled()) co_return result;
  if (head.status != kHttpOk) {
    result.code = RowCode::Fatal;
    co_return result;
  }
  LocalFile file(write_);
  const Outcome opened = file.Open(path);
  result.refused = !opened.Ok();
  result.code = opened.error;
  if (result.refused) co_return result;
  const double announced = std::clamp(NumericValue(length), 0.0, kMaxLength);
  result.code = co_await CopyBody(*requests.transfer, file, static_cast<qint64>(announced));
  const Outcome closed = file.Close();
  if (result.code == RowCode::Complete) result.code = closed.error;
  co_return result;
}

// Block by block, so that a file of any size takes the memory of one.
QCoro::Task<RowCode> SingleDownload::CopyBody(HttpTransfer& transfer, LocalFile& file,
                                              qint64 length) {
  qint64 written = 0;
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
  if (file.Open(path).Ok()) static_cast<void>(file.Write(wholeBody_));
}

}  // namespace zentorin
