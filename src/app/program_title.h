// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/product_name.h"

namespace zentorin {

QString ProductVersion();  // "0.1.0"

// Minor and revision number stand without a separator: version 0.0.8 is "Zentorin 0.08".
QString ProductTitle();
QString ProductTitle(int major, int minor, int revision);

QString ProgramTitle(const QString& currentListFile);  // of the window

}  // namespace zentorin
