// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Each stays open until the user closes it; its text goes to a file only when the user saves it.
class TextWindows {
 public:
  TextWindows() = default;
  TextWindows(const TextWindows&) = delete;
  TextWindows& operator=(const TextWindows&) = delete;
  virtual ~TextWindows() = default;

  // Line ends are CR LF. An empty title leaves the usual one. False when no window can be shown.
  virtual bool Show(const QString& text, const QString& title) = 0;
};

}  // namespace zentorin
