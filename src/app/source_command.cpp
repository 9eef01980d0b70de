// SPDX-License-Identifier: MIT
#include "app/source_command.h"

#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/run_state.h"
#include "base/status_board.h"
#include "download/run_driver.h"
#include "launch/opener.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFetched = 0;
constexpr int kCancelled = 1;

}  // namespace

SourceCommand::SourceCommand(const SourceContext& context, QObject* parent)
    : QObject(parent), context_(context) {
  // A run that ends takes the button with it. Queued: a countdown may offer it again for itself.
  connect(&context_.driver, &RunDriver::RunningChanged, this, &SourceCommand::OfferCancel,
          Qt::QueuedConnection);
}

QCoro::Task<void> SourceCommand::Show(QString url) {
  if (running_) co_return;
  SetRunning(true);
  fetching_ = true;
  ownButton_ = false;
  if (!context_.board.CancelShown()) context_.state.ClearCancel();
  OfferCancel();
  const FetchedPage page = co_await context_.http.FetchPageText(url);
  fetching_ = false;
  // A run that began meanwhile has the button now.
  if (ownButton_ && !context_.driver.IsRunning()) {
    StatusBoard& board = context_.board;
    board.SetCancelShown(false);
    board.SetCancelCaption(u"キャンセル"_s);
    context_.state.ClearCancel();
  }
  if (page.status == kFetched) {
    context_.opener.ShowText(page.text, EscapeForDisplay(url));
  } else if (page.status != kCancelled) {
    MessageBox box;
    box.text = u"このＵＲＬは無効です。\r\n\r\n"_s + EscapeForDisplay(url);
    co_await context_.messages.Ask(box);
  }
  SetRunning(false);
}

void SourceCommand::OfferCancel() {
  StatusBoard& board = context_.board;
  if (!fetching_ || board.CancelShown() || context_.state.CancelRequested()) return;
  ownButton_ = true;
  board.SetCancelEnabled(true);
  board.SetCancelShown(true);
}

void SourceCommand::SetRunning(bool running) {
  running_ = running;
  Q_EMIT RunningChanged(running);
}

}  // namespace zentorin
