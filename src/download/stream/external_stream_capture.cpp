// SPDX-License-Identifier: MIT
#include "download/stream/external_stream_capture.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <utility>

#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/wait.h"
#include "download/stream/recording_file.h"
#include "download/stream/stream_get_tool.h"
#include "download/stream/vlc_tool.h"
#include "launch/opener.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(captureLog, "zentorin.capture")

const QString& DownloadPage() {
  static const QString page =
      u"https://forest.watch.impress.co.jp/library/software/vlcmedia_ply/"_s;
  return page;
}

}  // namespace

ExternalStreamCapture::ExternalStreamCapture(const InstalledPrograms& programs,
                                             ToolWindows& windows, MessageBoxes& messages,
                                             Opener& opener, const WatchTimes& times)
    : lookup_(programs), windows_(windows), messages_(messages), opener_(opener), times_(times) {}

ExternalStreamCapture::~ExternalStreamCapture() = default;

void ExternalStreamCapture::FindTool() {
  found_ = lookup_.FindAny();
}

QCoro::Task<StreamOutcome> ExternalStreamCapture::Capture(StreamRequest request, Activity& activity,
                                                          CancelToken cancel) {
  StreamOutcome outcome;
  if (auto chosen = lookup_.Find(request.tool)) found_ = chosen;
  if (!found_) {
    co_await OfferDownloadPage();
    outcome.code = RowCode::ToolNotInstalled;
    co_return outcome;
  }
  RecordingFile file(request.path, times_.freeBytes);
  // StreamGet is told a folder alone.
  const bool namesItself = found_->kind == FoundTool::Kind::StreamGet;
  const Outcome ready = namesItself ? file.PutOldAside() : file.MakePart();
  outcome.code = ready.error;
  if (ready.Ok()) {
    tool_ = MakeTool(*found_, request, file);
    outcome = co_await RunTool(file, activity, cancel);
    tool_.reset();
  }
  if (outcome.code.IsRunTimeError()) {
    outcome.reason = request.path + u": "_s + Outcome::Of(outcome.code.Error()).message;
  }
  outcome.reason = EscapeForDisplay(outcome.reason);
  co_return outcome;
}

QCoro::Task<void> ExternalStreamCapture::OfferDownloadPage() {
  const MessageBox question{
      .title = u"VLC未インストール"_s,
      .text =
          u"VLC media player　がインストールされていないようです。\r\n\r\n"
          "ASX(ストリーミング形式）のダウンロードには、VLC media player が必要です。\r\n"
          "VLC のダウンロードサイト（窓の杜）に接続しましょうか？"_s,
      .buttons = MessageBox::Buttons::YesNo,
      .defaultAnswer = MessageBox::Answer::No};
  const MessageBox::Answer answer = co_await messages_.Ask(question);
  if (answer == MessageBox::Answer::Yes) opener_.OpenWithDefaultHandler(DownloadPage());
}

QCoro::Task<StreamOutcome> ExternalStreamCapture::RunTool(RecordingFile& file, Activity& activity,
                                                          CancelToken cancel) {
  StreamOutcome outcome;
  outcome.code = RowCode::Fatal;
  const Outcome started = tool_->Start();
  if (started.Ok()) {
    CaptureWatch watch(*tool_, file, activity, cancel, times_);
    outcome.code = co_await watch.Run();
    outcome.reason = outcome.code == RowCode::Fatal ? tool_->WhyNeverSeen() : tool_->Refusal();
  } else {
    outcome.reason = started.message;
  }
  // What has just ended may still be on its way here.
  co_await YieldToEventLoop();
  openWindow_ = tool_->OpenWindow();
  co_return outcome;
}

std::unique_ptr<StreamTool> ExternalStreamCapture::MakeTool(const FoundTool& found,
                                                            const StreamRequest& request,
                                                            const RecordingFile& file) {
  const QString& address = request.address;
  if (found.kind == FoundTool::Kind::StreamGet) {
    const StreamGetRecording recording{.address = address, .folder = QFileInfo(file.Path()).path()};
    qCInfo(captureLog).noquote() << EscapeForDisplay(found.path + u' ' + address);
    return std::make_unique<StreamGetTool>(found.words, QFileInfo(found.path).path(), recording,
                                           windows_, request.showTool);
  }
  const VlcRecording recording{.address = address, .path = file.Path(), .file = file.Written()};
  qCInfo(captureLog).noquote() << EscapeForDisplay(found.path + u' ' + VlcCommandText(recording));
  return std::make_unique<VlcTool>(found.words, recording, windows_, request.showTool);
}

void ExternalStreamCapture::ShowToolWindow(bool shown) {
  if (tool_) tool_->Show(shown);
}

bool ExternalStreamCapture::AskToolToClose() {
  const auto window = std::exchange(openWindow_, std::nullopt);
  if (!window || !windows_.Find(*window)) return false;
  windows_.Close(window->id);
  return true;
}

}  // namespace zentorin
