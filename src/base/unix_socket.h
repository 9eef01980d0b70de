// SPDX-License-Identifier: MIT
#pragma once

#include "base/descriptor.h"

namespace zentorin {

// A new non-blocking connection to the Unix socket of that name (abstract when it begins with NUL).
// Closed when nobody takes connections there; a full queue counts as that.
Descriptor ConnectUnixSocket(const QByteArray& name);

}  // namespace zentorin
