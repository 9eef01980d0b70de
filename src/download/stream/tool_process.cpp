// SPDX-License-Identifier: MIT
#include "download/stream/tool_process.h"

#include <cerrno>
#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

#include "base/wait.h"

namespace zentorin {

ToolProcess::ToolProcess(QObject* parent) : QObject(parent) {
  process_.setStandardInputFile(QProcess::nullDevice());
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.setStandardErrorFile(QProcess::nullDevice());
  // Between fork and exec: system calls only.
  process_.setChildProcessModifier([parentId = ::getpid()] {
    ::setsid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parentId) ::_exit(1);
  });
  connect(&process_, &QProcess::started, this, [this] { session_ = process_.processId(); });
  connect(&process_, &QProcess::readyReadStandardError, this,
          [this] { Q_EMIT Said(process_.readAllStandardError()); });
  connect(&process_, &QProcess::finished, this,
          [this] { empty_ = ::kill(-static_cast<pid_t>(session_), 0) != 0 && errno == ESRCH; });
  // Queued: whoever waits for it may start the next one or delete this object.
  connect(&process_, &QProcess::finished, this, &ToolProcess::Ended, Qt::QueuedConnection);
  connect(
      &process_, &QProcess::errorOccurred, this,
      [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) Q_EMIT Ended();
      },
      Qt::QueuedConnection);
}

ToolProcess::~ToolProcess() {
  disconnect(&process_, nullptr, this, nullptr);
  Kill();
  constexpr int kReapMs = 1000;
  if (Running()) process_.waitForFinished(kReapMs);
}

void ToolProcess::Start(const QStringList& words, const QString& folder) {
  killed_ = false;
  session_ = 0;
  empty_ = false;
  sinceStart_.start();
  if (!folder.isEmpty()) process_.setWorkingDirectory(folder);
  process_.start(words.value(0), words.mid(1), QIODevice::ReadOnly);
}

bool ToolProcess::EndedWell() const {
  return !Running() && session_ != 0 && process_.exitStatus() == QProcess::NormalExit &&
         process_.exitCode() == 0;
}

// A program that takes SIGTERM as a wish to quit ends well: it has finished its file.
bool ToolProcess::WasKilled() const {
  return !Running() && session_ != 0 && !killed_ && process_.exitStatus() == QProcess::CrashExit;
}

// What the program has started may still run when it has ended itself. One that has only just been
// made has no session of its own yet.
void ToolProcess::Kill() {
  if (Running()) {
    killed_ = true;
    process_.kill();
  }
  const auto session = static_cast<pid_t>(session_ != 0 ? session_ : process_.processId());
  if (session > 1 && !empty_) ::kill(-session, SIGKILL);
}

QCoro::Task<void> ToolProcess::Pause(CancelToken cancel, std::chrono::milliseconds time) {
  if (cancel.Cancelled()) co_return;
  FirstEvent event(time);
  event.Add(*this, &ToolProcess::Ended);
  event.Add(cancel);
  co_await event.Wait();
}

QCoro::Task<bool> ToolProcess::WaitForEnd(std::chrono::milliseconds time) {
  if (Running()) {
    FirstEvent event(time);
    event.Add(*this, &ToolProcess::Ended);
    co_await event.Wait();
  }
  co_return !Running();
}

}  // namespace zentorin
