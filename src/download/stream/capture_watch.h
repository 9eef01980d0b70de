// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>

#include <QCoro/QCoroTask>

namespace zentorin {

class RunState;
class StatusBoard;
class StreamTool;
struct ToolReading;

// Bounds of a watch; tests shorten the stalls.
struct WatchTimes {
  std::chrono::milliseconds poll{500};
  std::chrono::milliseconds stall{20'000};
  std::chrono::milliseconds stallOnceLengthIsKnown{10'000};
  std::chrono::milliseconds file{3'000};  // for the file to show up after the end
};

// Watches one recording until it ends, stalls or is cancelled, ends the tool and settles the
// result. All references outlive it.
class CaptureWatch {
 public:
  CaptureWatch(StreamTool& tool, RunState& state, StatusBoard& board, QString path,
               const WatchTimes& times);

  // Runs a tool that was started. Result: a ResultCode.
  QCoro::Task<int> Run();

 private:
  // A file as it stands; an old one that is to be written over is told from the new one by it.
  struct FileStamp {
    qint64 bytes = 0;
    qint64 changed = 0;  // milliseconds
    bool operator==(const FileStamp&) const = default;
  };

  QCoro::Task<bool> WaitForTool();
  QCoro::Task<void> Watch();
  QCoro::Task<int> Settle(bool appeared);
  QCoro::Task<bool> WaitForFile();
  FileStamp Stamp() const;
  bool FileWritten() const;
  void NoteProgress(const ToolReading& reading);
  void RemoveEmptyFile() const;

  StreamTool& tool_;
  RunState& state_;
  StatusBoard& board_;
  QString path_;
  WatchTimes times_;
  FileStamp before_;
  bool ran_ = false;  // progress was recorded
  bool fileExists_ = false;
};

}  // namespace zentorin
