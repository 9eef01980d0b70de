// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "download/row_code.h"

namespace zentorin {

class Activity;

struct StreamRequest {
  QString address;
  QString path;           // of this system
  int tool = 0;           // 0 VLC media player, 1 StreamGet
  bool showTool = false;  // its window is to be seen
};

struct StreamOutcome {
  RowCode code = RowCode::Complete;
  QString reason;  // a sentence for the user, where more than the code is known
};

// Records a stream through an external program.
class StreamCapture {
 public:
  StreamCapture() = default;
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;
  virtual ~StreamCapture() = default;

  virtual void FindTool() = 0;  // called at the start of every run
  virtual QCoro::Task<StreamOutcome> Capture(StreamRequest request, Activity& activity,
                                             CancelToken cancel) = 0;
  virtual void ShowToolWindow(bool /*shown*/) {}  // minimised, or hidden
  // True when a window of the tool is still open as this program ends: it is given a moment then.
  virtual bool AskToolToClose() { return false; }
};

}  // namespace zentorin
