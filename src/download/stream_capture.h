// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

struct DownloadContext;

// Records a stream through an external program.
class StreamCapture {
 public:
  StreamCapture() = default;
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;
  virtual ~StreamCapture() = default;

  // Finds the recording program; called at the start of every run.
  virtual void FindTool() = 0;
  // `url` is the row's address, `path` a path of this system. Result: a ResultCode; when more is
  // known of a failure, the status line then says it in red. `context` outlives the task.
  virtual QCoro::Task<int> Capture(const DownloadContext& context, QString url, QString path) = 0;
  // Shows the program's window minimised, or hides it, when one is open.
  virtual void ShowToolWindow(bool /*shown*/) {}
  // Asks the program's window to close when one is still open as this program ends. True when there
  // was one: it is given a moment then.
  virtual bool AskToolToClose() { return false; }
};

}  // namespace zentorin
