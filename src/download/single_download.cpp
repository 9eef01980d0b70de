// SPDX-License-Identifier: MIT
#include "download/single_download.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "base/run_state.h"
#include "base/run_time_error.h"
#include "download/result_code.h"
#include "net/http_engine.h"
#include "net/my_xml_http_request.h"

namespace zentorin {
namespace {

constexpr int kStatusOk = 200;
constexpr std::chrono::seconds kConnectTimeout(60);
constexpr std::chrono::seconds kIdleTimeout(60);

HttpRequest FreshRequest(const QString& url) {
  HttpRequest request;
  request.url = url;
  request.headers = ReloadHeaders();
  request.userAgent = "Zentorin";
  request.connectTimeout = kConnectTimeout;
  request.idleTimeout = kIdleTimeout;
  return request;
}

// The caption of the progress label. The smaller of 0 and the fraction done is 0 as soon as bytes
// arrive: the label reads "0.000" from the first block to the last, which is this program's rule.
QString ProgressCaption(double remaining, double expected) {
  constexpr int kDecimals = 3;
  return QString::number(std::min(0.0, 1.0 - remaining / expected), 'f', kDecimals);
}

}  // namespace

SingleDownload::SingleDownload(HttpEngine& engine, MyXMLHttpRequest& http, RunState& state,
                               LocalFile::WriteCall write)
    : engine_(engine), http_(http), state_(state), write_(write) {}

void SingleDownload::Prepare(const QString& url) {
  if (!state_.CancelRequested()) prepared_ = Send(url);
}

// The length query goes out first and the request right behind it: on a slow line a file then costs
// the round trips of one of them.
SingleDownload::Requests SingleDownload::Send(const QString& url) {
  Requests requests;
  requests.url = url;
  requests.length = http_.QueryHeader(url, HeaderSelector::ContentLength);
  requests.transfer = engine_.Open(FreshRequest(url));
  return requests;
}

SingleDownload::Requests SingleDownload::TakePrepared(const QString& url) {
  std::optional<Requests> prepared = std::exchange(prepared_, std::nullopt);
  if (prepared && prepared->url == url) return std::move(*prepared);
  return Send(url);
}

QCoro::Task<int> SingleDownload::DownloadToFile(QString url, QString path,
                                                DownloadProgress* progress) {
  fileRefused_ = false;
  const Requests requests = TakePrepared(url);
  const QString length = co_await requests.length;
  const double expected = std::max(0.0, NumericValue(length));
  if (state_.CancelRequested()) co_return kCancelled;

  const HttpHead head = co_await requests.transfer->Head();
  if (state_.CancelRequested()) co_return kCancelled;
  if (head.status != kStatusOk) co_return kFatal;

  LocalFile file(write_);
  const int refused = file.Open(path);
  fileRefused_ = refused != 0;
  if (refused != 0) co_return refused;
  const int result = co_await CopyBody(*requests.transfer, file, expected, progress);
  const int closed = file.Close();
  co_return result == kComplete ? closed : result;
}

// Block by block, so that a file of any size takes the memory of one.
QCoro::Task<int> SingleDownload::CopyBody(HttpTransfer& transfer, LocalFile& file, double expected,
                                          DownloadProgress* progress) {
  double remaining = expected;
  qint64 written = 0;
  while (true) {
    const QByteArray block = co_await transfer.NextBlock();
    if (state_.CancelRequested()) co_return kCancelled;
    if (block.isEmpty()) break;
    const int error = file.Write(block);
    if (error != 0) co_return error;
    written += block.size();
    // By a whole block, also for the last one.
    remaining -= static_cast<double>(HttpTransfer::kBlockBytes);
    if (progress == nullptr) continue;
    if (expected > 0) progress->SetCaption(ProgressCaption(remaining, expected));
    progress->SetBytes(written);
  }
  // What broke off is not complete, whatever was written.
  const bool whole = transfer.Failure() == HttpFailure::None;
  co_return whole ? static_cast<int>(kComplete) : static_cast<int>(RunTimeError::InputOutput);
}

QCoro::Task<int> SingleDownload::HTTPDownloadFile(QString url, QString path) {
  HttpRequest request = FreshRequest(url);
  request.maxBodyBytes = kMaxWholeBodyBytes;
  HttpAnswer answer = co_await FetchWhole(engine_, std::move(request));
  const bool whole = answer.head.status != 0 && answer.failure == HttpFailure::None;
  wholeBody_ = std::move(answer.body);
  if (!whole || answer.head.rawHeaders.contains("404 Not Found")) co_return 0;
  LocalFile file(write_);
  if (file.Open(path) == 0 && file.Write(wholeBody_) == 0) file.Close();
  co_return 0;
}

}  // namespace zentorin
