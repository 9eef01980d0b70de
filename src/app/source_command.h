// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <optional>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

class Activity;
class MessageBoxes;
class MyXMLHttpRequest;
class Opener;

struct SourceContext {
  MyXMLHttpRequest& http;
  Activity& activity;
  MessageBoxes& messages;
  Opener& opener;
};

// "ソース": fetches the text of a page and shows it in a text window. Goes on beside a run.
class SourceCommand : public QObject {
  Q_OBJECT

 public:
  explicit SourceCommand(const SourceContext& context, QObject* parent = nullptr);

  QCoro::Task<void> Show(QString url);  // does nothing while another one is on its way
  bool IsRunning() const { return running_; }
  void Cancel();  // in silence

 Q_SIGNALS:
  void RunningChanged(bool running);

 private:
  QCoro::Task<void> FetchAndShow(QString url);
  void SetRunning(bool running);

  SourceContext context_;
  bool running_ = false;
  std::optional<CancelSource> fetch_;  // the one under way
};

}  // namespace zentorin
