// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "net/curl_handles.h"

namespace zentorin {

// Reads "host:port:address:port[,…]". An empty host or port on the left fits every host or port, on
// the right it means the request's own; addresses of IPv6 stand in brackets. Entries that do not
// have this form are left out, each with a warning on standard error.
CurlList ParseConnectToMap(const QString& text);

}  // namespace zentorin
