// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "download/stream/stream_tool.h"
#include "download/stream/vlc_command.h"
#include "download/stream/vlc_log.h"
#include "download/stream/vlc_remote.h"

namespace zentorin {

class ToolWindows;

// A run of VLC media player. Its remote control takes the place of its window's status bar.
class VlcTool : public StreamTool {
 public:
  // With `shown`, VLC gets a minimised window where it can.
  VlcTool(QStringList command, VlcRecording recording, ToolWindows& windows, bool shown);

  Outcome Start() override;
  QString WhyNeverSeen() const override;
  QString Refusal() const override;
  bool Appeared() override;
  std::chrono::milliseconds AppearTime() const override { return std::chrono::seconds(5); }
  // Starts VLC again, without a window, when it has given up for lack of one.
  bool Running() override;
  bool RanUnseen() const override { return process_.EndedWell() || process_.WasKilled(); }
  ToolReading Read() override;
  QCoro::Task<void> End(bool atOnce) override;
  void Show(bool shown) override;

 private:
  QString SocketPath() const;
  bool StartWith(bool shown);
  void Hear(const QByteArray& log);
  bool HasRecorded() const;
  bool TakeWindow();
  bool Connected(std::chrono::milliseconds time) const;

  QStringList command_;
  VlcRecording recording_;
  ToolWindows& windows_;
  bool shown_;                             // it was asked for a window
  bool hidden_;                            // the user wants none to be seen
  std::optional<ToolWindow> window_;       // once it was there
  std::unique_ptr<QTemporaryDir> folder_;  // of the socket; for this user only
  VlcLog log_;
  VlcRemote remote_;
  QElapsedTimer sinceConnection_;  // invalid before it
  VlcRemote::Standing standing_;
};

}  // namespace zentorin
