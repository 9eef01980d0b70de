// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace zentorin {

// An address in the form that goes over the wire: blanks and characters outside ASCII in path and
// query become percent-encoded UTF-8, a host outside ASCII its "xn--" form. What is encoded already
// stays as it is. Empty when the address cannot be asked: another scheme than http and https, no
// host or an impossible one, control characters.
QByteArray WireAddress(const QString& url);

}  // namespace zentorin
