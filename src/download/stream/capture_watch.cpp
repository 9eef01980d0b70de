// SPDX-License-Identifier: MIT
#include "download/stream/capture_watch.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <utility>

#include "base/run_state.h"
#include "base/status_board.h"
#include "base/wait.h"
#include "download/result_code.h"
#include "download/stream/stream_tool.h"

namespace zentorin {
namespace {

constexpr std::chrono::milliseconds kAppearPoll(10);
constexpr std::chrono::milliseconds kFilePoll(100);

}  // namespace

CaptureWatch::CaptureWatch(StreamTool& tool, RunState& state, StatusBoard& board, QString path,
                           const WatchTimes& times)
    : tool_(tool),
      state_(state),
      board_(board),
      path_(std::move(path)),
      times_(times),
      before_(Stamp()) {}

QCoro::Task<int> CaptureWatch::Run() {
  const bool appeared = co_await WaitForTool();
  if (appeared) co_await Watch();
  if (FileWritten()) ran_ = true;
  const bool killed = tool_.Process().WasKilled();
  co_await tool_.End(state_.CancelRequested());
  // What something else ended in the middle is not whole, whatever was written.
  int code = kImperfect;
  if (!killed || !ran_) code = co_await Settle(appeared);
  if (code < kComplete) RemoveEmptyFile();
  co_return code;
}

// A tool that has ended is not waited for: a short recording may be over before it was seen.
QCoro::Task<bool> CaptureWatch::WaitForTool() {
  const auto polls = tool_.AppearTime() / kAppearPoll;
  for (auto i = polls; i > 0; --i) {
    if (tool_.Appeared()) co_return true;
    if (!tool_.Running() || state_.CancelRequested()) co_return false;
    co_await tool_.Process().Pause(state_, kAppearPoll);
  }
  co_return false;
}

QCoro::Task<void> CaptureWatch::Watch() {
  QString last;
  std::chrono::milliseconds still{0};
  while (tool_.Running() && !state_.CancelRequested()) {
    const ToolReading reading = tool_.Read();
    NoteProgress(reading);
    if (reading.fileExists) {
      fileExists_ = true;
      co_return;
    }
    // A stream without times of its own still grows.
    const QString standing = reading.text + u' ' + QString::number(Stamp().bytes);
    still = standing == last ? still + times_.poll : std::chrono::milliseconds(0);
    last = standing;
    if (still >= (reading.lengthKnown ? times_.stallOnceLengthIsKnown : times_.stall)) co_return;
    co_await tool_.Process().Pause(state_, times_.poll);
  }
}

void CaptureWatch::NoteProgress(const ToolReading& reading) {
  const bool written = FileWritten();
  if (reading.moved || written) ran_ = true;
  if (written) board_.SetFileBytes(Stamp().bytes);
  if (!reading.text.isEmpty()) {
    board_.SetStatus(QStringLiteral("ダウンロード中  ") + reading.text);
  }
  if (reading.lengthKnown) board_.SetDone(QString::number(reading.fraction, 'f', 2));
}

QCoro::Task<int> CaptureWatch::Settle(bool appeared) {
  if (fileExists_) co_return static_cast<int>(kSkip);
  if (ran_) {
    const bool whole = co_await WaitForFile();
    co_return whole ? static_cast<int>(kComplete) : static_cast<int>(kImperfect);
  }
  if (state_.CancelRequested()) co_return static_cast<int>(kCancelled);
  // A tool that was never seen but did run and ended found nothing to record.
  const bool seen = appeared || tool_.Process().EndedWell() || tool_.Process().WasKilled();
  co_return seen ? static_cast<int>(kDownloadFailed) : static_cast<int>(kFatal);
}

// After a cancel the tool is gone, and the file stays as it is.
QCoro::Task<bool> CaptureWatch::WaitForFile() {
  for (auto left = times_.file; !FileWritten() && left.count() > 0; left -= kFilePoll) {
    const bool undisturbed = co_await SleepUnlessCancelled(state_, kFilePoll);
    if (!undisturbed) break;
  }
  co_return FileWritten();
}

CaptureWatch::FileStamp CaptureWatch::Stamp() const {
  const QFileInfo file(path_);
  if (!file.exists()) return {};
  return {.bytes = file.size(), .changed = file.lastModified().toMSecsSinceEpoch()};
}

bool CaptureWatch::FileWritten() const {
  const FileStamp now = Stamp();
  return now.bytes > 0 && now != before_;
}

// Tools open the file before they know whether there is a stream. Left behind, it would count as
// downloaded in the next run.
void CaptureWatch::RemoveEmptyFile() const {
  const QFileInfo file(path_);
  if (file.isFile() && file.size() == 0) QFile::remove(path_);
}

}  // namespace zentorin
