// SPDX-License-Identifier: MIT
#include "launch/started_program.h"

#include <utility>

#include <unistd.h>

namespace zentorin {

StartedProgram::StartedProgram(std::chrono::milliseconds comeUpTime,
                               std::chrono::milliseconds settleTime, QObject* parent)
    : QProcess(parent), settleTime_(settleTime) {
  timer_.setSingleShot(true);
  timer_.setInterval(comeUpTime);
  connect(&timer_, &QTimer::timeout, this, [this] {
    Settle(state() == QProcess::Running ? ProgramStart::Running : ProgramStart::TimedOut);
  });
  connect(this, &QProcess::started, this, [this] { timer_.start(settleTime_); });
  connect(this, &QProcess::finished, this, &StartedProgram::OnFinished);
  connect(this, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    Settle(ProgramStart::NotStarted);
    deleteLater();
  });
  // Pipes would end with this program and take the started one along.
  setStandardInputFile(QProcess::nullDevice());
  setStandardOutputFile(QProcess::nullDevice());
  setStandardErrorFile(QProcess::nullDevice());
  setChildProcessModifier([] { ::setsid(); });
}

StartedProgram::~StartedProgram() {
  // QProcess ends a program that it takes to be running.
  disconnect(this, nullptr, this, nullptr);
  setProcessState(QProcess::NotRunning);
}

void StartedProgram::Run(const ProgramRequest& request, std::function<void(ProgramStart)> done) {
  done_ = std::move(done);
  if (!request.workingFolder.isEmpty()) setWorkingDirectory(request.workingFolder);
  timer_.start();
  start(request.program, request.arguments, QIODevice::NotOpen);
}

void StartedProgram::Settle(ProgramStart outcome) {
  timer_.stop();
  if (const auto done = std::exchange(done_, nullptr)) done(outcome);
}

void StartedProgram::OnFinished(int status, QProcess::ExitStatus how) {
  const bool well = how == QProcess::NormalExit && status == 0;
  Settle(well ? ProgramStart::EndedWell : ProgramStart::EndedWithError);
  deleteLater();
}

}  // namespace zentorin
