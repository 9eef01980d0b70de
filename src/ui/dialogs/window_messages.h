// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>
#include <chrono>

#include "base/message_boxes.h"

namespace zentorin {

class AutoRun;

// While an unattended run is armed or works, a box that nobody answers takes its default answer, so
// that the night's run goes on.
class WindowMessages : public MessageBoxes {
 public:
  static constexpr std::chrono::milliseconds kSelfAnswerTime{30'000};

  explicit WindowMessages(std::chrono::milliseconds selfAnswerTime = kSelfAnswerTime)
      : selfAnswerTime_(selfAnswerTime) {}

  // Both may come later than the boxes and end sooner.
  void Attach(QWidget* window, const AutoRun* autoRun);

  QCoro::Task<MessageBox::Answer> Ask(MessageBox box) override;

 private:
  std::chrono::milliseconds selfAnswerTime_;
  QPointer<QWidget> window_;
  const AutoRun* autoRun_ = nullptr;
};

}  // namespace zentorin
