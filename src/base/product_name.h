// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

inline QString ProductName() {
  return QString("Zentorin");
}

}  // namespace zentorin
