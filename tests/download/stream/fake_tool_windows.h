// SPDX-License-Identifier: MIT
#pragma once

#include "download/stream/tool_windows.h"

namespace zentorin::test {

// The windows that a test describes. To begin with there is no display.
class FakeToolWindows : public ToolWindows {
 public:
  bool Available() override { return available; }
  std::vector<ToolWindow> List() override {
    if (emptyLooks > 0 && emptyLooks-- > 0) return {};
    return windows;
  }
  void PressKey(quint32 /*window*/, char16_t /*letter*/) override {}
  void Show(quint32 /*window*/, bool /*shown*/) override {}
  void Close(quint32 window) override { closed.push_back(window); }
  void EndProgram(quint32 /*window*/) override {}

  bool available = false;
  int emptyLooks = 0;  // before the windows come up
  std::vector<ToolWindow> windows;
  std::vector<quint32> closed;
};

}  // namespace zentorin::test
