// SPDX-License-Identifier: MIT
#include "download/stream/capture_watch.h"

#include <utility>

#include "base/activity.h"
#include "base/wait.h"
#include "download/stream/recording_file.h"
#include "download/stream/stream_tool.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kAppearPoll(10);
constexpr std::chrono::milliseconds kFilePoll(100);

}  // namespace

CaptureWatch::CaptureWatch(StreamTool& tool, RecordingFile& file, Activity& activity,
                           CancelToken cancel, const WatchTimes& times)
    : tool_(tool), file_(file), activity_(activity), cancel_(std::move(cancel)), times_(times) {}

QCoro::Task<RowCode> CaptureWatch::Run() {
  const bool appeared = co_await WaitForTool();
  if (appeared) co_await Watch();
  if (file_.Bytes() > 0) ran_ = true;
  killed_ = tool_.Process().WasKilled();
  co_await tool_.End(cancel_.Cancelled());
  const RowCode code = co_await Settle(appeared);
  // A broken recording is kept as well: its row says "imperfect", and there may be no second time
  // to record it. An empty one takes nothing's place.
  const bool kept = (code == RowCode::Complete || code == RowCode::Imperfect) && file_.Bytes() > 0;
  if (kept) {
    const Outcome taken = file_.Keep();
    if (!taken.Ok()) co_return taken.error;
  }
  co_return code;
}

// A tool that has ended is not waited for: a short recording may be over before it was seen. It is
// asked once more when the time is over.
QCoro::Task<bool> CaptureWatch::WaitForTool() {
  for (;;) {
    const bool late = tool_.Process().SinceStart() >= tool_.AppearTime();
    if (tool_.Appeared()) co_return true;
    if (late || cancel_.Cancelled() || !tool_.Running()) co_return false;
    co_await tool_.Process().Pause(cancel_, kAppearPoll);
  }
}

QCoro::Task<void> CaptureWatch::Watch() {
  QString last;
  std::chrono::milliseconds still{0};
  while (tool_.Running() && !cancel_.Cancelled()) {
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
    co_await tool_.Process().Pause(cancel_, times_.poll);
  }
}

void CaptureWatch::NoteProgress(const ToolReading& reading) {
  const qint64 bytes = file_.Bytes();
  if (reading.moved || bytes > 0) ran_ = true;
  if (bytes > 0) activity_.SetBytes(bytes);
  if (!reading.text.isEmpty()) {
    activity_.Say(u"ダウンロード中  "_s + reading.text);
  }
  if (reading.lengthKnown) activity_.SetRecorded(reading.fraction);
}

QCoro::Task<RowCode> CaptureWatch::Settle(bool appeared) {
  if (!tool_.Refusal().isEmpty()) co_return RowCode::DownloadFailed;
  // While what was written is still there: its end would make room.
  const bool cancelled = cancel_.Cancelled();
  if (!cancelled && file_.DiskIsFull()) co_return RowCode::OutOfDiskSpace;
  // What something else ended in the middle is not whole, whatever was written.
  if (killed_ && ran_) co_return RowCode::Imperfect;
  if (fileExists_) co_return RowCode::Skip;
  if (ran_) {
    const bool whole = co_await WaitForFile();
    co_return whole ? RowCode::Complete : RowCode::Imperfect;
  }
  if (cancelled) co_return RowCode::Cancelled;
  // A tool that did run found nothing to record.
  const bool seen = appeared || tool_.RanUnseen();
  co_return seen ? RowCode::DownloadFailed : RowCode::Fatal;
}

// After a cancel the tool is gone, and the file stays as it is.
QCoro::Task<bool> CaptureWatch::WaitForFile() {
  for (auto left = times_.file; file_.Bytes() == 0 && left.count() > 0; left -= kFilePoll) {
    const bool undisturbed = co_await SleepUnlessCancelled(cancel_, kFilePoll);
    if (!undisturbed) break;
  }
  co_return file_.Bytes() > 0;
}

}  // namespace zentorin
