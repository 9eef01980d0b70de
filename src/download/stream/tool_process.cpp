// SPDX-License-Identifier: MIT
#include "download/stream/tool_process.h"

#include <QTimer>
#include <csignal>

#include <QCoro/QCoroSignal>
#include <sys/prctl.h>
#include <unistd.h>

#include "base/run_state.h"

namespace zentorin {
namespace {

// Ends with the first of several events.
class FirstOf : public QObject {
  Q_OBJECT

 public:
  FirstOf(ToolProcess& process, std::chrono::milliseconds time) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &FirstOf::Over);
    connect(&process, &ToolProcess::Ended, this, &FirstOf::Over);
    timer_.start(time);
  }

 Q_SIGNALS:
  void Over();

 private:
  QTimer timer_;
};

}  // namespace

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
  if (!folder.isEmpty()) process_.setWorkingDirectory(folder);
  process_.start(words.value(0), words.mid(1), QIODevice::NotOpen);
}

bool ToolProcess::EndedWell() const {
  return !Running() && session_ != 0 && process_.exitStatus() == QProcess::NormalExit &&
         process_.exitCode() == 0;
}

bool ToolProcess::WasKilled() const {
  return !Running() && session_ != 0 && !killed_ && process_.exitStatus() == QProcess::CrashExit;
}

// What the program has started may still run when it has ended itself.
void ToolProcess::Kill() {
  if (Running()) killed_ = true;
  const auto session = static_cast<pid_t>(session_ != 0 ? session_ : process_.processId());
  if (session > 1) ::kill(-session, SIGKILL);
}

QCoro::Task<void> ToolProcess::Pause(RunState& state, std::chrono::milliseconds time) {
  if (state.CancelRequested()) co_return;
  FirstOf event(*this, time);
  connect(&state, &RunState::Cancelled, &event, &FirstOf::Over);
  co_await qCoro(&event, &FirstOf::Over);
}

QCoro::Task<bool> ToolProcess::WaitForEnd(std::chrono::milliseconds time) {
  if (Running()) {
    FirstOf event(*this, time);
    co_await qCoro(&event, &FirstOf::Over);
  }
  co_return !Running();
}

}  // namespace zentorin

#include "tool_process.moc"
