// SPDX-License-Identifier: MIT
#include "download/stream/vlc_tool.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include <unistd.h>

#include "base/file_names.h"
#include "download/stream/tool_windows.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kQuitTime(1000);
constexpr std::chrono::milliseconds kKillTime(500);

// The longest name of a folder in which a socket's path still fits.
constexpr qsizetype kMaxFolderBytes = 80;

// Since VLC listens: how long the watch waits for its window, and how long it is looked for.
constexpr std::chrono::milliseconds kWindowTime(1000);
constexpr std::chrono::milliseconds kLookTime(12'000);

// From a stream of unknown size, as live ones are, the player works out lengths of centuries.
constexpr qint64 kMaxLengthSeconds = 100LL * 3600;

// "00:01:05"
QString ClockText(qint64 seconds) {
  constexpr qint64 kPerMinute = 60;
  const auto two = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
  return two(seconds / kPerMinute / kPerMinute) + u':' + two(seconds / kPerMinute % kPerMinute) +
         u':' + two(seconds % kPerMinute);
}

QString SocketFolderTemplate() {
  const QString name = u"/zentorin-XXXXXX"_s;
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  for (const QString& folder : {runtime, QDir::tempPath()}) {
    const bool fits = !folder.isEmpty() && folder.toUtf8().size() <= kMaxFolderBytes;
    if (fits && QFileInfo(folder).isWritable()) return folder + name;
  }
  return u"/tmp"_s + name;
}

bool IsVlcWindow(const ToolWindow& window) {
  return window.IsOfClass(u"vlc"_s) && window.IsMain();
}

}  // namespace

VlcTool::VlcTool(QStringList command, VlcRecording recording, ToolWindows& windows, bool shown)
    : command_(std::move(command)),
      recording_(std::move(recording)),
      windows_(windows),
      shown_(shown && windows.Available()),
      hidden_(!shown) {
  process_.Listen();
  QObject::connect(&process_, &ToolProcess::Said, &process_,
                   [this](const QByteArray& log) { Hear(log); });
}

Outcome VlcTool::Start() {
  folder_ = std::make_unique<QTemporaryDir>(SocketFolderTemplate());
  if (!folder_->isValid()) {
    return Outcome::Failed(RunTimeError::Other,
                           u"一時フォルダを作成できません: "_s + folder_->errorString());
  }
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // This has the last word on how much is logged.
  environment.insert(u"VLC_VERBOSE"_s, u"2"_s);
  // Its window notes its size and place: not in the user's own settings.
  environment.insert(u"XDG_CONFIG_HOME"_s, folder_->path());
  process_.SetEnvironment(environment);
  if (StartWith(shown_)) return {};
  return Outcome::Failed(RunTimeError::BadFileName,
                         u"録画できないアドレスです。: "_s + CutForDisplay(recording_.address));
}

QString VlcTool::SocketPath() const {
  return folder_->filePath(u"rc"_s);
}

QString VlcTool::WhyNeverSeen() const {
  if (::geteuid() == 0) {
    return u"VLC は root では動作しません。一般ユーザーで実行して下さい。"_s;
  }
  return u"VLC が応答しません。: "_s + command_.value(0);
}

bool VlcTool::StartWith(bool shown) {
  const QStringList arguments = VlcArguments(recording_, SocketPath(), shown);
  if (arguments.isEmpty()) return false;
  // Nothing of one that has given up is left.
  log_ = {};
  remote_.Disconnect();
  sinceConnection_.invalidate();
  standing_ = {};
  window_.reset();
  process_.Start(command_ + arguments);
  return true;
}

// What it opened without a right to it is not read on: every moment counts.
void VlcTool::Hear(const QByteArray& log) {
  log_.Take(log);
  if (!log_.Refused().isEmpty()) process_.Kill();
}

bool VlcTool::HasRecorded() const {
  return QFileInfo(recording_.file).size() > 0;
}

QString VlcTool::Refusal() const {
  if (!log_.Refused().isEmpty()) {
    return u"録画できないアドレスに誘導されました。: "_s + CutForDisplay(recording_.address) +
           u" → "_s + log_.Refused();
  }
  if (log_.HasTold() || !HasRecorded()) return {};
  return u"VLC が何を録画したか確認できません。: "_s + CutForDisplay(recording_.address);
}

bool VlcTool::Appeared() {
  if (!remote_.Connect(SocketPath())) return false;
  if (!sinceConnection_.isValid()) {
    remote_.Ask();
    sinceConnection_.start();
  }
  // Its window comes later than its remote control, and is nothing that a recording is lost for.
  return !shown_ || TakeWindow() || Connected(kWindowTime) || process_.SinceStart() >= AppearTime();
}

// For at least that time.
bool VlcTool::Connected(std::chrono::milliseconds time) const {
  return sinceConnection_.isValid() && sinceConnection_.hasExpired(time.count());
}

// VLC without its window plugin refuses the options of the window, and one that finds no display
// gives up, even after it has begun to listen: it records as well without.
bool VlcTool::Running() {
  if (process_.Running()) return true;
  if (!shown_ || process_.EndedWell() || HasRecorded() || !Refusal().isEmpty()) return false;
  shown_ = false;
  return StartWith(false) && process_.Running();
}

// A window that VLC is to start minimised opens in full: it is minimised as soon as it is there.
bool VlcTool::TakeWindow() {
  if (window_) return true;
  const auto windows = windows_.List();
  const auto own = std::ranges::find_if(windows, [this](const ToolWindow& window) {
    return window.visible && IsVlcWindow(window) && window.processId == process_.Id();
  });
  if (own == windows.end()) return false;
  window_ = *own;
  windows_.Show(window_->id, !hidden_);
  return true;
}

// The player's state is no sign of progress: it says "playing" from the first byte of an answer on,
// also of a page that is no stream, and its remote control does so before it has even connected.
// What it makes of a stream shows in its position, its length or the size of the file.
ToolReading VlcTool::Read() {
  if (const auto answer = remote_.Answer()) standing_ = *answer;
  if (standing_.length >= kMaxLengthSeconds) standing_.length = 0;
  // One that was started again is yet to be found.
  if (remote_.Connect(SocketPath())) remote_.Ask();
  if (shown_ && !Connected(kLookTime)) TakeWindow();
  ToolReading reading;
  reading.lengthKnown = standing_.length > 0;
  reading.moved = standing_.position > 0 || reading.lengthKnown;
  if (!reading.moved) return reading;
  reading.text = ClockText(standing_.position);
  if (reading.lengthKnown) {
    reading.text += u'/' + ClockText(standing_.length);
    reading.fraction = std::min(
        1.0, static_cast<double>(standing_.position) / static_cast<double>(standing_.length));
  }
  return reading;
}

QCoro::Task<void> VlcTool::End(bool atOnce) {
  if (process_.Running() && !atOnce) {
    // Only by its own end does it finish the file.
    remote_.Quit();
    co_await process_.WaitForEnd(kQuitTime);
  }
  process_.Kill();
  co_await process_.WaitForEnd(kKillTime);
}

void VlcTool::Show(bool shown) {
  hidden_ = !shown;
  if (window_) {
    if (windows_.Find(*window_)) windows_.Show(window_->id, shown);
  } else if (shown_) {
    TakeWindow();
  }
}

}  // namespace zentorin
