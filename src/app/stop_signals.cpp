// SPDX-License-Identifier: MIT
#include "app/stop_signals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "download/run_outcome.h"

namespace zentorin {
namespace {

// A signal handler can reach nothing but such variables.
std::atomic<int> writeEnd = -1;
std::atomic<bool> stopSeen = false;

extern "C" void OnStop(int /*signal*/) {
  if (writeEnd < 0 || stopSeen.exchange(true)) ::_exit(kExitCancelled);
  const int interrupted = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
  errno = interrupted;
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  ::sigaction(signal, &action, nullptr);
}

bool IsIgnored(int signal) {
  struct sigaction action = {};
  return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void StopSignals::Catch() {
  Handle(SIGPIPE, SIG_IGN);
  Handle(SIGXFSZ, SIG_IGN);
  Handle(SIGINT, OnStop);
  Handle(SIGTERM, OnStop);
  if (!IsIgnored(SIGHUP)) Handle(SIGHUP, OnStop);
}

StopSignals::StopSignals(QObject* parent) : QObject(parent) {
  Catch();
  std::array<int, 2> ends = {-1, -1};
  if (writeEnd >= 0 || ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  readEnd_ = Descriptor(ends[0]);
  writeEnd = ends[1];
  notifier_.setSocket(readEnd_.Number());
  notifier_.setEnabled(true);
  connect(&notifier_, &QSocketNotifier::activated, this, &StopSignals::Read);
}

StopSignals::~StopSignals() {
  if (readEnd_.Number() < 0) return;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!IsIgnored(signal)) Handle(signal, SIG_DFL);
  }
  ::close(writeEnd.exchange(-1));
}

void StopSignals::Read() {
  std::array<char, 16> bytes = {};
  if (::read(readEnd_.Number(), bytes.data(), bytes.size()) > 0) Q_EMIT StopRequested();
}

}  // namespace zentorin
