// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace zentorin {

// The program's two ways to run. Each builds its pieces in order, hands references over, runs the
// event loop of the application that stands already, and answers the exit status. `programFolder`
// is absolute.
int RunUnattended(const QStringList& arguments, const QString& programFolder);
int RunWindow(const QStringList& arguments, const QString& programFolder);

}  // namespace zentorin
