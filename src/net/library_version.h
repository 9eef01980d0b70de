// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Version of the HTTP library at run time and of what it uses for TLS: "7.88.1 (OpenSSL/3.0.9)".
QString HttpLibraryVersion();

}  // namespace zentorin
