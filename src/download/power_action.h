// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QString>

namespace zentorin {

// What a power action means to login1, the service of this system that performs it.
struct PowerAction {
  QString name;            // the caption that the user chooses
  QLatin1String question;  // the method that answers whether it is allowed
  QLatin1String forced;    // the method that takes `flags`
  quint64 flags;
  QLatin1String plain;  // the same without flags, for a login1 that does not know them

  // Ends the user's session; all others act on the computer.
  bool EndsSession() const { return question.isEmpty(); }
  // "PowerOffWithFlags(16)".
  QString CallText() const;
};

// Null for "閉じる" and for any other text: then there is nothing to ask of the system.
const PowerAction* FindPowerAction(const QString& name);

}  // namespace zentorin
