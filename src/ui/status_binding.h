// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class JobBinding;
class MainLayout;
class StatusBoard;
struct MainControls;

// Shows the status board in the bottom of the window: status line, current file, progress,
// counters, cancel button, after-batch box; and locks the editing surface while work runs. All
// references must outlive the binding.
class StatusBinding : public QObject {
  Q_OBJECT

 public:
  StatusBinding(StatusBoard& board, MainControls& controls, MainLayout& layout, JobBinding& job,
                QObject* parent = nullptr);

 Q_SIGNALS:
  // Controls were shown or hidden: the window has to lay itself out again.
  void LayoutNeeded();

 private:
  void Show();
  void ShowProgress();
  void ShowBusy();
  void ShowStandby();

  StatusBoard& board_;
  MainControls& c_;
  MainLayout& layout_;
  JobBinding& job_;
  double shownProgress_ = 0;
};

}  // namespace zentorin
