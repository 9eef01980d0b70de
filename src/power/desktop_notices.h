// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

class MessageBus;

// Shows notices on the user's desktop, if there is one. Nobody waits for what becomes of them.
class DesktopNotices {
 public:
  explicit DesktopNotices(MessageBus& bus) : bus_(bus) {}

  void Show(const QString& title, const QString& text);

 private:
  MessageBus& bus_;
};

}  // namespace zentorin
