// SPDX-License-Identifier: MIT
#pragma once

#include "download/stream_capture.h"

namespace zentorin {

class MessageBoxes;
class Opener;

// Stream capture where no recording program is at hand: each stream is answered with
// kToolNotInstalled, after the question whether to look for one. Both references outlive it.
class NoStreamCapture : public StreamCapture {
 public:
  NoStreamCapture(MessageBoxes& messages, Opener& opener) : messages_(messages), opener_(opener) {}

  void FindTool() override {}
  QCoro::Task<int> Capture(QString url, QString path) override;

 private:
  MessageBoxes& messages_;
  Opener& opener_;
};

}  // namespace zentorin
