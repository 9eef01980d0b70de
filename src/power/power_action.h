// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1StringView>
#include <QString>

namespace zentorin {

// What a power action means to login1, the service of this system that performs it.
struct PowerAction {
  QString name;                // the caption that the user chooses
  QLatin1StringView question;  // the method that answers whether it is allowed
  QLatin1StringView forced;    // the method that takes `flags`
  quint64 flags;
  QLatin1StringView plain;  // the same without flags, for a login1 that does not know them

  bool EndsSession() const { return question.isEmpty(); }  // all others act on the computer
  QString CallText() const;                                // "PowerOffWithFlags(16)"
};

// Null for "閉じる" and for any other text: then there is nothing to ask of the system.
const PowerAction* FindPowerAction(const QString& name);

}  // namespace zentorin

namespace zentorin::login1 {

inline QString Service() {
  return QString::fromLatin1("org.freedesktop.login1");
}
inline QString ManagerPath() {
  return QString::fromLatin1("/org/freedesktop/login1");
}
inline QString ManagerInterface() {
  return QString::fromLatin1("org.freedesktop.login1.Manager");
}

// The error of a call that a user's authorisation would allow.
inline QString AuthorisationError() {
  return QString::fromLatin1("org.freedesktop.DBus.Error.InteractiveAuthorizationRequired");
}

}  // namespace zentorin::login1
