// SPDX-License-Identifier: MIT
#include "download/stream/capture_watch.h"

#include "base/run_state.h"
#include "base/status_board.h"
#include "base/wait.h"
#include "download/result_code.h"
#include "download/stream/recording_file.h"
#include "download/stream/stream_tool.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kAppearPoll(10);
constexpr std::chrono::milliseconds kFilePoll(100);

}  // namespace

CaptureWatch::CaptureWatch(StreamTool& tool, RecordingFile& file, RunState& state,
                           StatusBoard& board, const WatchTimes& times)
    : tool_(tool), file_(file), state_(state), board_(board), times_(times) {}

QCoro::Task<int> CaptureWatch::Run() {
  const bool appeared = co_await WaitForTool();
  if (appeared) co_await Watch();
  if (file_.Bytes() > 0) ran_ = true;
  killed_ = tool_.Process().WasKilled();
  co_await tool_.End(state_.CancelRequested());
  const int code = co_await Settle(appeared);
  // A broken recording is kept as well: its row says "imperfect", and there may be no second time
  // to record it. An empty one takes nothing's place.
  const bool kept = (code == kComplete || code == kImperfect) && file_.Bytes() > 0;
  const int error = kept ? file_.Keep() : 0;
  co_return error != 0 ? error : code;
}

// A tool that has ended is not waited for: a short recording may be over before it was seen. It is
// asked once more when the time is over.
QCoro::Task<bool> CaptureWatch::WaitForTool() {
  for (;;) {
    const bool late = tool_.Process().SinceStart() >= tool_.AppearTime();
    if (tool_.Appeared()) co_return true;
    if (late || state_.CancelRequested() || !tool_.Running()) co_return false;
    co_await tool_.Process().Pause(state_, kAppearPoll);
  }
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
    const QString standing = reading.text + u' ' + QString::number(file_.Bytes());
    still = standing == last ? still + times_.poll : std::chrono::milliseconds(0);
    last = standing;
    if (file_.DiskIsFull()) co_return;
    if (still >= (reading.lengthKnown ? times_.stallOnceLengthIsKnown : times_.stall)) co_return;
    co_await tool_.Process().Pause(state_, times_.poll);
  }
}

void CaptureWatch::NoteProgress(const ToolReading& reading) {
  const qint64 bytes = file_.Bytes();
  if (reading.moved || bytes > 0) ran_ = true;
  if (bytes > 0) board_.SetFileBytes(bytes);
  if (!reading.text.isEmpty()) {
    board_.SetStatus(u"ダウンロード中  "_s + reading.text);
  }
  if (reading.lengthKnown) board_.SetDone(QString::number(reading.fraction, 'f', 2));
}

QCoro::Task<int> CaptureWatch::Settle(bool appeared) {
  if (!tool_.Refusal().isEmpty()) co_return static_cast<int>(kDownloadFailed);
  // While what was written is still there: its end would make room.
  const bool cancelled = state_.CancelRequested();
  if (!cancelled && file_.DiskIsFull()) co_return static_cast<int>(kOutOfDiskSpace);
  // What something else ended in the middle is not whole, whatever was written.
  if (killed_ && ran_) co_return static_cast<int>(kImperfect);
  if (fileExists_) co_return static_cast<int>(kSkip);
  if (ran_) {
    const bool whole = co_await WaitForFile();
    co_return whole ? static_cast<int>(kComplete) : static_cast<int>(kImperfect);
  }
  if (cancelled) co_return static_cast<int>(kCancelled);
  // A tool that did run found nothing to record.
  const bool seen = appeared || tool_.RanUnseen();
  co_return seen ? static_cast<int>(kDownloadFailed) : static_cast<int>(kFatal);
}

// After a cancel the tool is gone, and the file stays as it is.
QCoro::Task<bool> CaptureWatch::WaitForFile() {
  for (auto left = times_.file; file_.Bytes() == 0 && left.count() > 0; left -= kFilePoll) {
    const bool undisturbed = co_await SleepUnlessCancelled(state_, kFilePoll);
    if (!undisturbed) break;
  }
  co_return file_.Bytes() > 0;
}

}  // namespace zentorin
