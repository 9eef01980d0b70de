// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <chrono>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

// Spreads the bytes of all files of a run over time.
class SpeedLimit {
 public:
  explicit SpeedLimit(int kilobytesPerSecond) : kilobytesPerSecond_(kilobytesPerSecond) {}

  // Comes back when so many bytes more may be asked for; false when it was cancelled.
  QCoro::Task<bool> Spend(qint64 bytes, CancelToken cancel);

 private:
  int kilobytesPerSecond_;  // of 1000 bytes; 0 for no limit
  std::chrono::steady_clock::time_point free_;
};

}  // namespace zentorin
