// SPDX-License-Identifier: MIT
#include "base/display_server.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include "base/unix_socket.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr const char* kX11 = "DISPLAY";
constexpr const char* kWayland = "WAYLAND_DISPLAY";

// The process that asks. It holds nothing of its parent's open but the pipe, and ends with it.
[[noreturn]] void AskX11(pid_t parent, int answer) {
  const bool tied = prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && getppid() == parent;
  const auto kept = static_cast<unsigned>(answer);
  if (kept > 0) close_range(0, kept - 1, 0);
  close_range(kept + 1, ~0U, 0);
  const char byte = 1;
  const bool told = tied && xcb_connection_has_error(xcb_connect(nullptr, nullptr)) == 0 &&
                    write(answer, &byte, 1) == 1;
  _exit(told ? 0 : 1);
}

// Connecting waits for the server's answer without end, so a process of its own does it.
bool X11Answers(std::chrono::milliseconds bound) {
  std::array<int, 2> ends = {-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  const QDeadlineTimer deadline(bound);
  const pid_t self = getpid();
  const pid_t child = fork();
  if (child == 0) AskX11(self, ends[1]);
  close(ends[1]);
  pollfd watched = {.fd = ends[0], .events = POLLIN, .revents = 0};
  int ready = -1;
  do {
    ready = poll(&watched, 1, static_cast<int>(deadline.remainingTime()));
  } while (ready < 0 && errno == EINTR);
  char byte = 0;
  const bool answers = ready > 0 && read(ends[0], &byte, 1) == 1;
  close(ends[0]);
  if (child > 0) {
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
  }
  return answers;
}

bool WaylandAnswers() {
  const QString name = qEnvironmentVariable(kWayland);
  const bool whole = name.startsWith(u'/');
  const QString path = whole ? name : qEnvironmentVariable("XDG_RUNTIME_DIR") + u'/' + name;
  return ConnectUnixSocket(QFile::encodeName(path)).Number() >= 0;
}

// Qt's base packages come without it.
bool HasWaylandPlugin() {
  const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/platforms"_s);
  return !plugins.entryList({u"libqwayland*"_s}).isEmpty();
}

}  // namespace

QStringList DropDeadDisplays(std::chrono::milliseconds bound) {
  QStringList dead;
  const auto drop = [&dead](const char* variable) {
    dead.append(qEnvironmentVariable(variable));
    qunsetenv(variable);
  };
  if (!qEnvironmentVariableIsEmpty(kX11) && !X11Answers(bound)) drop(kX11);
  if (!qEnvironmentVariableIsEmpty(kWayland) && !WaylandAnswers()) drop(kWayland);
  return dead;
}

bool HasDisplay() {
  const bool x11 = !qEnvironmentVariableIsEmpty(kX11);
  const bool wayland = !qEnvironmentVariableIsEmpty(kWayland) && HasWaylandPlugin();
  const QString platforms = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (platforms.isEmpty()) return x11 || wayland;
  const QStringList named = platforms.split(u';', Qt::SkipEmptyParts);
  return std::ranges::any_of(named, [&](const QString& platform) {
    if (platform.startsWith(u"xcb"_s)) return x11;
    return wayland || !platform.startsWith(u"wayland"_s);
  });
}

}  // namespace zentorin
