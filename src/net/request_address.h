// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace zentorin {

// As it goes over the wire: percent-encoded UTF-8 where needed, the host in its "xn--" form. Empty
// when it is no http or https address or holds control characters.
QByteArray WireAddress(const QString& url);

// "host:port" of such an address, without a user's name; the port is left out where none is
// written.
QString HostOfWireAddress(const QByteArray& address);

}  // namespace zentorin
