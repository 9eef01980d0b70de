// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

// Puts the computer into a power state.
class PowerControl {
 public:
  PowerControl() = default;
  PowerControl(const PowerControl&) = delete;
  PowerControl& operator=(const PowerControl&) = delete;
  virtual ~PowerControl() = default;

  // `action`: "スタンバイ", "休止", "ログオフ", "再起動" or "シャットダウン"; any other text does
  // nothing. Empty when it was done, else a sentence that says why not.
  virtual QCoro::Task<QString> Perform(QString action) = 0;
};

}  // namespace zentorin
