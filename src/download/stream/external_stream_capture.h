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
class MessageBoxes;
class Opener;
class RecordingFile;
class StreamTool;

// Records through VLC media player or StreamGet. A tool that is missing gives way to the other.
class ExternalStreamCapture : public StreamCapture {
 public:
  ExternalStreamCapture(const InstalledPrograms& programs, ToolWindows& windows,
                        MessageBoxes& messages, Opener& opener,
                        const WatchTimes& times = WatchTimes());
  ~ExternalStreamCapture() override;

  void FindTool() override;
  QCoro::Task<StreamOutcome> Capture(StreamRequest request, Activity& activity,
                                     CancelToken cancel) override;
  void ShowToolWindow(bool shown) override;
  bool AskToolToClose() override;

  QStringList ToolPaths() const { return lookup_.Paths(); }

 private:
  QCoro::Task<void> OfferDownloadPage();
  QCoro::Task<StreamOutcome> RunTool(RecordingFile& file, Activity& activity, CancelToken cancel);
  std::unique_ptr<StreamTool> MakeTool(const FoundTool& found, const StreamRequest& request,
                                       const RecordingFile& file);

  ToolLookup lookup_;
  ToolWindows& windows_;
  MessageBoxes& messages_;
  Opener& opener_;
  WatchTimes times_;
  std::optional<FoundTool> found_;
  std::unique_ptr<StreamTool> tool_;      // of the recording under way
  std::optional<ToolWindow> openWindow_;  // of a tool that no way of ending it has ended
};

}  // namespace zentorin
