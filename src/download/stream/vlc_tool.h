// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "download/stream/stream_tool.h"
#include "download/stream/vlc_command.h"
#include "download/stream/vlc_remote.h"

namespace zentorin {

class ToolWindows;

// A run of VLC media player that records one stream. Its remote control takes the place of its
// window's status bar.
class VlcTool : public StreamTool {
 public:
  // `command`: the words that start VLC. `windows` outlives the object; with `shown`, VLC gets a
  // minimised window where it can.
  VlcTool(QStringList command, VlcRecording recording, ToolWindows& windows, bool shown);

  QString Start() override;
  QString WhyNeverSeen() const override;
  bool Appeared() override;
  std::chrono::milliseconds AppearTime() const override { return std::chrono::seconds(5); }
  bool RanUnseen() const override { return process_.EndedWell() || process_.WasKilled(); }
  ToolReading Read() override;
  QCoro::Task<void> End(bool atOnce) override;
  void Show(bool shown) override;

 private:
  QString SocketPath() const { return folder_->filePath(QStringLiteral("rc")); }
  bool StartWith(bool shown);

  QStringList command_;
  VlcRecording recording_;
  ToolWindows& windows_;
  bool shown_;
  std::unique_ptr<QTemporaryDir> folder_;  // of the socket; for this user only
  VlcRemote remote_;
  VlcRemote::Standing standing_;
};

}  // namespace zentorin
