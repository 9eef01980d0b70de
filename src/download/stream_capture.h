// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

// Records a stream through an external program.
class StreamCapture {
 public:
  StreamCapture() = default;
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;
  virtual ~StreamCapture() = default;

  // Finds the recording program; called at the start of every run.
  virtual void FindTool() = 0;
  // `path` is a path of this system. Result: a ResultCode.
  virtual QCoro::Task<int> Capture(QString url, QString path) = 0;
  // Asks the program's window to close when one is still open as this program ends. True when there
  // was one: it is given a moment then.
  virtual bool AskToolToClose() { return false; }
};

}  // namespace zentorin
