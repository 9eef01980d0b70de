// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <memory>

namespace zentorin {

// The wish to stop one command, shared by its source and its tokens.
class CancelState : public QObject {
  Q_OBJECT

 public:
  bool cancelled = false;

 Q_SIGNALS:
  void Cancelled();
};

// What the work of a command looks at and waits on. A token that has no source is never cancelled.
class CancelToken {
 public:
  CancelToken() = default;

  bool Cancelled() const { return state_ && state_->cancelled; }
  // Calls `stop` at a cancel that is yet to come, as long as `context` lives.
  void OnCancel(QObject* context, std::function<void()> stop) const;

 private:
  friend class CancelSource;
  explicit CancelToken(std::shared_ptr<CancelState> state) : state_(std::move(state)) {}

  std::shared_ptr<CancelState> state_;
};

// Belongs to one command, from its start to its end. A cancel is never taken back.
class CancelSource {
 public:
  CancelToken Token() const { return CancelToken(state_); }
  void Cancel();  // ends all that waits on a token before it returns

 private:
  std::shared_ptr<CancelState> state_ = std::make_shared<CancelState>();
};

}  // namespace zentorin
