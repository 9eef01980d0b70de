// SPDX-License-Identifier: MIT
#pragma once

#include "base/message_boxes.h"

namespace zentorin {

class Terminal;

// Message boxes where there is no display: each becomes one line, "title: text", its line breaks
// shown as " / ", and is answered by its default at once. A question's line ends with that answer.
class TerminalMessages : public MessageBoxes {
 public:
  explicit TerminalMessages(Terminal& terminal) : terminal_(terminal) {}

  QCoro::Task<MessageBox::Answer> Ask(MessageBox box) override;

 private:
  Terminal& terminal_;
};

}  // namespace zentorin
