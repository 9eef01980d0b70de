// SPDX-License-Identifier: MIT
#include "app/source_command.h"

#include "base/activity.h"
#include "base/file_names.h"
#include "base/message_boxes.h"
#include "launch/opener.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

SourceCommand::SourceCommand(const SourceContext& context, QObject* parent)
    : QObject(parent), context_(context) {}

QCoro::Task<void> SourceCommand::Show(QString url) {
  if (running_) co_return;
  SetRunning(true);
  co_await FetchAndShow(url);
  SetRunning(false);
}

void SourceCommand::Cancel() {
  if (!fetch_) return;
  context_.activity.SetCancelling();
  CancelSource fetch = *fetch_;
  fetch.Cancel();
}

QCoro::Task<void> SourceCommand::FetchAndShow(QString url) {
  auto fetching = std::make_unique<Activity::Scope>(context_.activity, Phase::FetchingPage);
  const CancelToken cancel = fetch_.emplace().Token();
  const FetchedPage page = co_await context_.http.FetchPageText(url, cancel);
  fetch_.reset();
  fetching.reset();
  if (page.Ok()) {
    context_.opener.ShowText(page.text, EscapeForDisplay(url));
  } else if (page.failure != HttpFailure::Cancelled) {
    MessageBox box;
    box.text = u"このＵＲＬは無効です。\r\n\r\n"_s + EscapeForDisplay(url);
    co_await context_.messages.Ask(box);
  }
}

void SourceCommand::SetRunning(bool running) {
  running_ = running;
  Q_EMIT RunningChanged(running);
}

}  // namespace zentorin
