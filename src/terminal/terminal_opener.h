// SPDX-License-Identifier: MIT
#pragma once

#include "launch/opener.h"

namespace zentorin {

class Terminal;

// Opens nothing: what would have been opened is named on the terminal.
class TerminalOpener : public Opener {
 public:
  explicit TerminalOpener(Terminal& terminal) : terminal_(terminal) {}

  void OpenWithDefaultHandler(const QString& target) override;
  void OpenFolder(const QString& path) override;
  void ShowText(const QString& text, const QString& title) override;
  void PlayOrView(const QString& target) override;
  void OpenWith(const QString& applicationName, const QString& target) override;

 private:
  Terminal& terminal_;
};

}  // namespace zentorin
