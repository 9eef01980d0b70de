// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "net/curl_handles.h"

namespace zentorin {

// "host:port:address:port[,…]": an empty host or port on the left fits every one, on the right it
// is the request's own. Entries of another form are left out with a warning on standard error.
CurlList ParseConnectToMap(const QString& text);

}  // namespace zentorin
