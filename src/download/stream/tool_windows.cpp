// SPDX-License-Identifier: MIT
#include "download/stream/tool_windows.h"

#include <algorithm>

namespace zentorin {

std::optional<ToolWindow> ToolWindows::Find(const ToolWindow& window) {
  const auto windows = List();
  const auto found = std::ranges::find_if(
      windows, [&window](const ToolWindow& other) { return other.IsSameAs(window); });
  return found == windows.end() ? std::nullopt : std::optional(*found);
}

}  // namespace zentorin
