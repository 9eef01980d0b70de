// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"
#include "download/row_code.h"
#include "download/stream/recording_file.h"

namespace zentorin {

class Activity;
class StreamTool;
struct ToolReading;

// Bounds of a watch; tests shorten the stalls and fill the disk.
struct WatchTimes {
  std::chrono::milliseconds poll{500};
  std::chrono::milliseconds stall{20'000};
  std::chrono::milliseconds stallOnceLengthIsKnown{10'000};
  std::chrono::milliseconds file{3'000};  // for the file to show up after the end
  RecordingFile::FreeBytesCall freeBytes = &RecordingFile::FreeBytes;
};

// Watches one recording until it ends, stalls or is cancelled, ends the tool, keeps the result.
class CaptureWatch {
 public:
  CaptureWatch(StreamTool& tool, RecordingFile& file, Activity& activity, CancelToken cancel,
               const WatchTimes& times);

  // The tool was started. A run-time error when the recording could not take its path.
  QCoro::Task<RowCode> Run();

 private:
  QCoro::Task<bool> WaitForTool();
  QCoro::Task<void> Watch();
  QCoro::Task<RowCode> Settle(bool appeared);
  QCoro::Task<bool> WaitForFile();
  void NoteProgress(const ToolReading& reading);

  StreamTool& tool_;
  RecordingFile& file_;
  Activity& activity_;
  CancelToken cancel_;
  WatchTimes times_;
  bool ran_ = false;  // progress was recorded
  bool fileExists_ = false;
  bool killed_ = false;  // by something else, in the middle
};

}  // namespace zentorin
