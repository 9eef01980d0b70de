// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QStringList>
#include <optional>

#include "download/stream/stream_get_settings.h"
#include "download/stream/stream_tool.h"
#include "download/stream/tool_windows.h"

namespace zentorin {

// A run of StreamGet, a Windows program under a compatibility layer. Its settings file gives it its
// orders. Its controls are no windows of their own here: its title is its status text.
class StreamGetTool : public StreamTool {
 public:
  // `command`: the words that start it; `folder`: where it lies.
  StreamGetTool(QStringList command, QString folder, StreamGetRecording recording,
                ToolWindows& windows, bool shown);

  Outcome Start() override;
  QString WhyNeverSeen() const override;
  bool Appeared() override;
  std::chrono::milliseconds AppearTime() const override { return std::chrono::seconds(20); }
  // The layer's starter may end at once: the tool runs as long as it has its window.
  bool Running() override;
  // Without its window there is nothing to tell what it did.
  bool RanUnseen() const override { return false; }
  ToolReading Read() override;
  QCoro::Task<void> End(bool atOnce) override;
  void Show(bool shown) override;
  std::optional<ToolWindow> OpenWindow() const override;

 private:
  bool AnswerYes(const QString& title);

  QStringList command_;
  QString folder_;
  StreamGetRecording recording_;
  ToolWindows& windows_;
  bool shown_;
  QSet<quint32> otherWindows_;  // there before the start: other runs of the same program
  ToolWindow window_;           // its main window; without an id before it was seen
};

}  // namespace zentorin
