// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>
#include <optional>

#include <QCoro/QCoroTask>

#include "base/outcome.h"
#include "download/stream/tool_process.h"
#include "download/stream/tool_windows.h"

namespace zentorin {

struct ToolReading {
  QString text;         // as the user sees it: "00:00:13/00:01:00", "45%"
  double fraction = 0;  // 0 to 1
  bool lengthKnown = false;
  bool moved = false;       // the recording has got on since its start
  bool fileExists = false;  // the tool says that it need not record
};

// One run of a recording program, from its start to its end. The watch drives it.
class StreamTool {
 public:
  StreamTool() = default;
  StreamTool(const StreamTool&) = delete;
  StreamTool& operator=(const StreamTool&) = delete;
  virtual ~StreamTool() = default;

  virtual Outcome Start() = 0;

  virtual QString WhyNeverSeen() const = 0;  // a sentence for the user

  // True once it can be watched; asked every 10 ms until AppearTime() after the last start.
  virtual bool Appeared() = 0;
  virtual std::chrono::milliseconds AppearTime() const = 0;

  virtual bool Running() { return process_.Running(); }
  // It has done its work although it never appeared: some recordings are over before they are seen.
  virtual bool RanUnseen() const = 0;
  // A sentence on why its recording is not to be had; empty when it is.
  virtual QString Refusal() const { return {}; }
  virtual ToolReading Read() = 0;  // called every 500 ms; also answers what the tool asks

  // Leaves no process behind. `atOnce`: the user waits for it, and the recording is of no use.
  virtual QCoro::Task<void> End(bool atOnce) = 0;

  virtual void Show(bool shown) = 0;  // minimised, or hidden
  virtual std::optional<ToolWindow> OpenWindow() const { return std::nullopt; }

  ToolProcess& Process() { return process_; }

 protected:
  ToolProcess process_;
};

}  // namespace zentorin
