// SPDX-License-Identifier: MIT
#include "net/curl_http_engine.h"

#include <QPointer>
#include <utility>

#include <curl/curl.h>

#include "net/connect_to_map.h"
#include "net/curl_multi_loop.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;
namespace {

using Event = CurlExchange::Event;

// The waits hold the exchange by themselves, so they end well even when the transfer goes first.
QCoro::Task<HttpHead> HeadOf(std::shared_ptr<CurlExchange> exchange) {
  CurlExchange::Waiter head = exchange->Until(Event::Head);
  co_await head;
  co_return exchange->Head();
}

QCoro::Task<QByteArray> NextBlockOf(QPointer<CurlMultiLoop> loop,
                                    std::shared_ptr<CurlExchange> exchange) {
  CurlExchange::Waiter ready = exchange->Until(Event::Block);
  co_await ready;
  QByteArray block = exchange->TakeBlock();
  if (loop) loop->MakeRoom(*exchange);
  co_return block;
}

// The caller's end of an exchange.
class CurlTransfer : public HttpTransfer {
 public:
  CurlTransfer(CurlMultiLoop& loop, std::shared_ptr<CurlExchange> exchange)
      : loop_(&loop), exchange_(std::move(exchange)) {}
  ~CurlTransfer() override {
    if (loop_) loop_->Release(exchange_);
  }

  QCoro::Task<HttpHead> Head() override { return HeadOf(exchange_); }
  QCoro::Task<QByteArray> NextBlock() override { return NextBlockOf(loop_, exchange_); }
  HttpFailure Failure() const override { return exchange_->Failure(); }
  void TakeTurn() override {
    if (loop_) loop_->TakeTurn(exchange_);
  }

 private:
  QPointer<CurlMultiLoop> loop_;
  std::shared_ptr<CurlExchange> exchange_;
};

}  // namespace

CurlHttpEngine::CurlHttpEngine(const QString& connectTo)
    : loop_(std::make_unique<CurlMultiLoop>(ParseConnectToMap(connectTo))) {}

CurlHttpEngine::~CurlHttpEngine() = default;

std::unique_ptr<HttpTransfer> CurlHttpEngine::Open(HttpRequest request) {
  return std::make_unique<CurlTransfer>(*loop_, loop_->Start(std::move(request)));
}

void CurlHttpEngine::StartRun(int connectionsPerHost) {
  loop_->StartRun();
  loop_->SetConnectionsPerHost(connectionsPerHost);
}

void CurlHttpEngine::TellPauses(const PauseListener& listener) {
  QObject::connect(loop_.get(), &CurlMultiLoop::WaitingFor, listener);
}

QString HttpLibraryVersion() {
  const curl_version_info_data* info = curl_version_info(CURLVERSION_NOW);
  QString text = QString::fromUtf8(info->version);
  if (info->ssl_version != nullptr) {
    text += u" (%1)"_s.arg(QString::fromUtf8(info->ssl_version));
  }
  return text;
}

}  // namespace zentorin
