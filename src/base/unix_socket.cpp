// SPDX-License-Identifier: MIT
#include "base/unix_socket.h"

#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace zentorin {

Descriptor ConnectUnixSocket(const QByteArray& name) {
  sockaddr_un there = {};
  there.sun_family = AF_UNIX;
  const auto size = static_cast<size_t>(name.size());
  if (size == 0 || size >= sizeof(there.sun_path)) return Descriptor();
  std::memcpy(there.sun_path, name.constData(), size);
  Descriptor made(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (made.Number() < 0) return made;
  // The length tells where an abstract name ends.
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how sockets are addressed
  if (connect(made.Number(), reinterpret_cast<const sockaddr*>(&there), length) != 0) made.Close();
  return made;
}

}  // namespace zentorin
