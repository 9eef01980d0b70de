// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "download/stream/capture_watch.h"
#include "download/stream/tool_lookup.h"
#include "download/stream/tool_windows.h"
#include "download/stream_capture.h"

namespace zentorin {

class InstalledPrograms;
class RecordingFile;
class StreamTool;

// Records streams through VLC media player or StreamGet, whichever the settings choose; a tool that
// is not installed gives way to the other one.
class ExternalStreamCapture : public StreamCapture {
 public:
  // Both outlive the object.
  ExternalStreamCapture(const InstalledPrograms& programs, ToolWindows& windows,
                        const WatchTimes& times = WatchTimes());
  ~ExternalStreamCapture() override;

  void FindTool() override;
  QCoro::Task<int> Capture(const DownloadContext& context, QString url, QString path) override;
  void ShowToolWindow(bool shown) override;
  bool AskToolToClose() override;

  // Captions of the two tools in the settings dialog.
  QStringList ToolCaptions() const { return lookup_.Captions(); }

 private:
  QCoro::Task<void> OfferDownloadPage(const DownloadContext& context);
  QCoro::Task<int> Record(const DownloadContext& context, FoundTool found, QString address,
                          QString path);
  QCoro::Task<int> RunTool(const DownloadContext& context, RecordingFile& file);
  std::unique_ptr<StreamTool> MakeTool(const DownloadContext& context, const FoundTool& found,
                                       const QString& address, const RecordingFile& file);

  ToolLookup lookup_;
  ToolWindows& windows_;
  WatchTimes times_;
  std::optional<FoundTool> found_;
  std::unique_ptr<StreamTool> tool_;      // of the recording under way
  std::optional<ToolWindow> openWindow_;  // of a tool that no way of ending it has ended
};

}  // namespace zentorin
