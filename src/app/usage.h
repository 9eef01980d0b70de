// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

// What "--help" or "--version" among the arguments is answered with, before anything else happens;
// nothing without such an argument.
std::optional<QString> PlainAnswer(const QStringList& arguments);

// What a start that can show no window and arms no run is told.
QString HowToRunUnattended();

}  // namespace zentorin
