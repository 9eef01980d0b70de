// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin::test {

// Cleans a name, as file name and as relative path, decoded and to the letter, and checks all that
// must hold of the results. Answers what is wrong, empty when nothing is.
QString FaultOfCleanedName(const QString& name);

}  // namespace zentorin::test
