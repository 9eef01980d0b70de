// SPDX-License-Identifier: MIT
#pragma once

class QByteArray;

namespace zentorin {

// A new non-blocking connection to the Unix socket of that name (abstract when it begins with NUL),
// the caller's to close. Negative when nobody takes connections there; a full queue counts as that.
int ConnectUnixSocket(const QByteArray& name);

}  // namespace zentorin
