// SPDX-License-Identifier: MIT
#include "base/unix_socket.h"

#include <QByteArray>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zentorin {

int ConnectUnixSocket(const QByteArray& name) {
  sockaddr_un there = {};
  there.sun_family = AF_UNIX;
  const auto size = static_cast<size_t>(name.size());
  if (size == 0 || size >= sizeof(there.sun_path)) return -1;
  std::memcpy(there.sun_path, name.constData(), size);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return -1;
  // The length tells where an abstract name ends.
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how sockets are addressed
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&there), length) == 0) {
    return descriptor;
  }
  close(descriptor);
  return -1;
}

}  // namespace zentorin
