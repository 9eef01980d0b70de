// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class MessageBus;

// Shows notices on the user's desktop, if there is one that shows them. What becomes of a notice is
// not waited for.
class DesktopNotices {
 public:
  // `bus` is the session's and outlives this.
  explicit DesktopNotices(MessageBus& bus) : bus_(bus) {}

  void Show(const QString& title, const QString& text);

 private:
  MessageBus& bus_;
};

}  // namespace zentorin
