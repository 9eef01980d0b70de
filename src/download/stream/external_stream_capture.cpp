// SPDX-License-Identifier: MIT
#include "download/stream/external_stream_capture.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <utility>

#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/run_state.h"
#include "base/run_time_error.h"
#include "base/status_board.h"
#include "base/wait.h"
#include "download/download_run.h"
#include "download/local_target.h"
#include "download/result_code.h"
#include "download/stream/recording_file.h"
#include "download/stream/stream_get_tool.h"
#include "download/stream/vlc_tool.h"
#include "launch/opener.h"
#include "net/api_web.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(captureLog, "zentorin.capture")

const QString& DownloadPage() {
  static const QString page =
      u"https://forest.watch.impress.co.jp/library/software/vlcmedia_ply/"_s;
  return page;
}

// Fetched anew: what a page names may change from one moment to the next.
QCoro::Task<QString> StreamAddress(const DownloadContext& context, QString url) {
  if (SuffixOf(url) != ".asx"_L1) co_return url;
  const FetchedPage page = co_await context.http.FetchPageText(url);
  co_return page.status == 0 ? API_Web::StreamLink(page.text) : QString();
}

}  // namespace

ExternalStreamCapture::ExternalStreamCapture(const InstalledPrograms& programs,
                                             ToolWindows& windows, const WatchTimes& times)
    : lookup_(programs), windows_(windows), times_(times) {}

ExternalStreamCapture::~ExternalStreamCapture() = default;

void ExternalStreamCapture::FindTool() {
  found_ = lookup_.FindAny();
}

QCoro::Task<int> ExternalStreamCapture::Capture(const DownloadContext& context, QString url,
                                                QString path) {
  if (auto chosen = lookup_.Find(context.options.streamingTool)) found_ = chosen;
  const std::optional<FoundTool> found = found_;
  if (!found) {
    co_await OfferDownloadPage(context);
    co_return static_cast<int>(kToolNotInstalled);
  }
  const QString address = co_await StreamAddress(context, url);
  if (context.state.CancelRequested()) co_return static_cast<int>(kCancelled);
  if (address.isEmpty()) co_return static_cast<int>(kSkipNone);
  const int code = co_await Record(context, *found, address, path);
  co_return code;
}

QCoro::Task<void> ExternalStreamCapture::OfferDownloadPage(const DownloadContext& context) {
  const MessageBox question{
      .title = u"VLC未インストール"_s,
      .text =
          u"VLC media player　がインストールされていないようです。\r\n\r\n"
          "ASX(ストリーミング形式）のダウンロードには、VLC media player が必要です。\r\n"
          "VLC のダウンロードサイト（窓の杜）に接続しましょうか？"_s,
      .buttons = MessageBox::Buttons::YesNo,
      .defaultAnswer = MessageBox::Answer::No};
  const MessageBox::Answer answer = co_await context.messages.Ask(question);
  if (answer == MessageBox::Answer::Yes) context.opener.OpenWithDefaultHandler(DownloadPage());
}

QCoro::Task<int> ExternalStreamCapture::Record(const DownloadContext& context, FoundTool found,
                                               QString address, QString path) {
  RecordingFile file(path, times_.freeBytes);
  // StreamGet is told a folder alone.
  const bool namesItself = found.kind == FoundTool::Kind::StreamGet;
  int code = namesItself ? file.PutOldAside() : file.MakePart();
  if (code == 0) {
    tool_ = MakeTool(context, found, address, file);
    code = co_await RunTool(context, file);
    tool_.reset();
  }
  if (code >= kFirstRunTimeError) {
    const QString why = DescribeRunTimeError(static_cast<RunTimeError>(code));
    context.board.SetStatus(EscapeForDisplay(path + u": "_s + why), StatusBoard::kRed);
  }
  co_return code;
}

QCoro::Task<int> ExternalStreamCapture::RunTool(const DownloadContext& context,
                                                RecordingFile& file) {
  CaptureWatch watch(*tool_, file, context.state, context.board, times_);
  QString fault = tool_->Start();
  int code = kFatal;
  if (fault.isEmpty()) {
    code = co_await watch.Run();
    fault = code == kFatal ? tool_->WhyNeverSeen() : tool_->Refusal();
  }
  if (!fault.isEmpty()) context.board.SetStatus(EscapeForDisplay(fault), StatusBoard::kRed);
  // What has just ended may still be on its way here.
  co_await YieldToEventLoop();
  openWindow_ = tool_->OpenWindow();
  co_return code;
}

std::unique_ptr<StreamTool> ExternalStreamCapture::MakeTool(const DownloadContext& context,
                                                            const FoundTool& found,
                                                            const QString& address,
                                                            const RecordingFile& file) {
  const bool shown = context.options.vlcShow;
  if (found.kind == FoundTool::Kind::StreamGet) {
    const StreamGetRecording recording{.address = address, .folder = QFileInfo(file.Path()).path()};
    qCInfo(captureLog).noquote() << EscapeForDisplay(found.path + u' ' + address);
    return std::make_unique<StreamGetTool>(found.words, QFileInfo(found.path).path(), recording,
                                           windows_, shown);
  }
  const VlcRecording recording{.address = address, .path = file.Path(), .file = file.Written()};
  qCInfo(captureLog).noquote() << EscapeForDisplay(found.path + u' ' + VlcCommandText(recording));
  return std::make_unique<VlcTool>(found.words, recording, windows_, shown);
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
