// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

inline QString ProductName() {
  return {"Zentorin"};
}

}  // namespace zentorin
