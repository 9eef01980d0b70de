// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

// The answer to "--help" or "--version", before anything else happens; nothing without those.
std::optional<QString> PlainAnswer(const QStringList& arguments);

QString HowToRunUnattended();  // told by a start that can show no window and arms no run

}  // namespace zentorin
