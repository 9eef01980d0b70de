// SPDX-License-Identifier: MIT
#pragma once

#include "download/stream/tool_windows.h"

namespace zentorin::test {

// A machine without a display.
class NoToolWindows : public ToolWindows {
 public:
  bool Available() override { return false; }
  std::vector<ToolWindow> List() override { return {}; }
  void PressKey(quint32 /*window*/, char16_t /*letter*/) override {}
  void Show(quint32 /*window*/, bool /*shown*/) override {}
  void Close(quint32 /*window*/) override {}
  void EndProgram(quint32 /*window*/) override {}
};

}  // namespace zentorin::test
