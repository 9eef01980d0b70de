// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QCoro/QCoroTask>

#include "download/stream/recording_file.h"

namespace zentorin {

class RunState;
class StatusBoard;
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

// Watches one recording until it ends, stalls or is cancelled, ends the tool, settles the result
// and keeps what was recorded. All references outlive it.
class CaptureWatch {
 public:
  CaptureWatch(StreamTool& tool, RecordingFile& file, RunState& state, StatusBoard& board,
               const WatchTimes& times);

  // Runs a tool that was started. Result: a ResultCode, or the run-time error number of a recording
  // that could not take its path.
  QCoro::Task<int> Run();

 private:
  QCoro::Task<bool> WaitForTool();
  QCoro::Task<void> Watch();
  QCoro::Task<int> Settle(bool appeared);
  QCoro::Task<bool> WaitForFile();
  void NoteProgress(const ToolReading& reading);

  StreamTool& tool_;
  RecordingFile& file_;
  RunState& state_;
  StatusBoard& board_;
  WatchTimes times_;
  bool ran_ = false;  // progress was recorded
  bool fileExists_ = false;
  bool killed_ = false;  // by something else, in the middle
};

}  // namespace zentorin
