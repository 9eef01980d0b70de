// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "download/stream/tool_windows.h"

struct xcb_connection_t;

namespace zentorin {

// The windows of an X display ($DISPLAY), also those of a Wayland desktop's X programs. The
// connection is made at the first question and made anew when it has broken.
class X11ToolWindows : public ToolWindows {
 public:
  X11ToolWindows();
  ~X11ToolWindows() override;

  bool Available() override;
  std::vector<ToolWindow> List() override;
  std::optional<ToolWindow> Find(const ToolWindow& window) override;
  void PressKey(quint32 window, char16_t letter) override;
  void Show(quint32 window, bool shown) override;
  void Close(quint32 window) override;
  void EndProgram(quint32 window) override;

 private:
  class Display;

  Display* Connected();  // null without a display

  std::unique_ptr<Display> display_;
};

}  // namespace zentorin
