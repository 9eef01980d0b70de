// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTimer>
#include <chrono>
#include <functional>

#include "launch/program_starter.h"

namespace zentorin {

// In a session of its own, so that a signal for this program does not reach it; it stays when this
// object goes.
class StartedProgram : public QProcess {
  Q_OBJECT

 public:
  // `settleTime`: how long an error at the start is waited for once the program runs.
  StartedProgram(std::chrono::milliseconds comeUpTime, std::chrono::milliseconds settleTime,
                 QObject* parent);
  ~StartedProgram() override;

  // `done` is called once. The object deletes itself when the program ends.
  void Run(const ProgramRequest& request, std::function<void(ProgramStart)> done);

 private:
  void Settle(ProgramStart outcome);
  void OnFinished(int status, QProcess::ExitStatus how);

  std::chrono::milliseconds settleTime_;
  QTimer timer_;
  std::function<void(ProgramStart)> done_;
};

}  // namespace zentorin
