// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

class MessageBoxes;
class MyXMLHttpRequest;
class Opener;
class RunDriver;
class RunState;
class StatusBoard;

// What the source command works on; all of it outlives the command.
struct SourceContext {
  MyXMLHttpRequest& http;
  RunState& state;
  StatusBoard& board;
  MessageBoxes& messages;
  Opener& opener;
  RunDriver& driver;
};

// "ソース": fetches the text of a page and shows it in a text window. Goes on beside a run, which
// then has the cancel button; alone it offers the button itself. The cancel ends it in silence.
class SourceCommand : public QObject {
  Q_OBJECT

 public:
  explicit SourceCommand(const SourceContext& context, QObject* parent = nullptr);

  // One page at a time: does nothing while another one is on its way.
  QCoro::Task<void> Show(QString url);
  bool IsRunning() const { return running_; }

 Q_SIGNALS:
  void RunningChanged(bool running);

 private:
  void SetRunning(bool running);
  void OfferCancel();

  SourceContext context_;
  bool running_ = false;
  bool fetching_ = false;
  bool ownButton_ = false;
};

}  // namespace zentorin
