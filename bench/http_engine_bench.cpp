// SPDX-License-Identifier: MIT
// What the HTTP engine itself costs. Two uses:
//   http_engine_bench file <url> <path>     one file, block by block, into a path
//   http_engine_bench gets <url> <count>    as many gets of a small file, one after the other
// To be set beside `curl -o` from the same server, such as nginx on loopback.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <memory>
#include <utility>

#include <sys/resource.h>

#include "net/curl_http_engine.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using zentorin::HttpAnswer, zentorin::HttpFailure;
using zentorin::HttpEngine, zentorin::HttpRequest, zentorin::HttpTransfer;

QCoro::Task<qint64> Save(HttpEngine& engine, HttpRequest request, QString path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) co_return -1;
  const std::unique_ptr<HttpTransfer> transfer = engine.Open(std::move(request));
  qint64 bytes = 0;
  while (true) {
    const QByteArray block = co_await transfer->NextBlock();
    if (block.isEmpty()) break;
    if (file.write(block) != block.size()) co_return -1;
    bytes += block.size();
  }
  co_return transfer->Failure() == HttpFailure::None ? bytes : -1;
}

QCoro::Task<qint64> GetMany(HttpEngine& engine, HttpRequest request, int count) {
  qint64 bytes = 0;
  for (int i = 0; i < count; ++i) {
    const HttpAnswer answer = co_await FetchWhole(engine, request);
    if (answer.failure != HttpFailure::None) co_return -1;
    bytes += answer.body.size();
  }
  co_return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) return 2;
  zentorin::CurlHttpEngine engine({});
  HttpRequest request;
  request.url = arguments.at(2);
  request.idleTimeout = std::chrono::seconds(60);
  QElapsedTimer clock;
  clock.start();
  const bool isFile = arguments.at(1) == u"file"_s;
  const int count = arguments.at(3).toInt();
  const qint64 bytes = isFile ? QCoro::waitFor(Save(engine, request, arguments.at(3)))
                              : QCoro::waitFor(GetMany(engine, request, count));
  const double time = static_cast<double>(clock.nsecsElapsed()) / 1e9;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%lld bytes in %.3f s, %.0f requests/s, peak %ld KiB\n",
              static_cast<long long>(bytes), time, (isFile ? 1 : count) / time, usage.ru_maxrss);
  return bytes < 0 ? 1 : 0;
}
