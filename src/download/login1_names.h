// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where login1 is found on the system's bus.
namespace zentorin::login1 {

inline QString Service() {
  return QStringLiteral("org.freedesktop.login1");
}
inline QString ManagerPath() {
  return QStringLiteral("/org/freedesktop/login1");
}
inline QString ManagerInterface() {
  return QStringLiteral("org.freedesktop.login1.Manager");
}

// The error of a call that a user's authorisation would allow.
inline QString AuthorisationError() {
  return QStringLiteral("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired");
}

}  // namespace zentorin::login1
