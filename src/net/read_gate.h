// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <QCoro/QCoroTask>

namespace zentorin {

// Slows an answer down that is read ahead of its turn, while too much of others is held.
class ReadGate {
 public:
  ReadGate() = default;
  ReadGate(const ReadGate&) = delete;
  ReadGate& operator=(const ReadGate&) = delete;
  virtual ~ReadGate() = default;

  // So many bytes more have come. Comes back when further ones may be read.
  virtual QCoro::Task<void> Pass(qsizetype bytes) = 0;
};

}  // namespace zentorin
