// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// "Zentorin".
QString ProductName();

// "0.1.0".
QString ProductVersion();

// The product's name and short version: minor and revision number stand without a separator, so
// that version 0.0.8 shows as "Zentorin 0.08".
QString ProductTitle();
QString ProductTitle(int major, int minor, int revision);

// The window's title: ProductTitle(), and the list file's name without its folder when one is open.
QString ProgramTitle(const QString& currentListFile);

}  // namespace zentorin
