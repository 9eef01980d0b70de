// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace zentorin {

class JobBinding;
class MainLayout;
class StatusBoard;
struct MainControls;

// Shows the status board in the bottom of the window: status line, current file, progress,
// counters, cancel button, after-batch box; and locks the editing surface while work runs. A run
// writes a status line for each file, so only what changed is touched. All references must outlive
// the binding.
class StatusBinding : public QObject {
  Q_OBJECT

 public:
  StatusBinding(StatusBoard& board, MainControls& controls, MainLayout& layout, JobBinding& job,
                QObject* parent = nullptr);

  // Gives the focus to a control; one that is locked gets it when the work is over.
  void Focus(QWidget* control);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  // Controls were shown, hidden or renamed: the window has to lay itself out again.
  void LayoutNeeded();

 private:
  void Show();
  void ShowStatusLine();
  void ShowStatusColour();
  void ShowProgress();
  void ShowBusy();
  QWidget* Focused() const;
  void Lock(bool enabled);
  void ShowStandby();
  // Shows or hides a control whose room others take.
  void SetShown(QWidget* control, bool shown);

  StatusBoard& board_;
  MainControls& c_;
  MainLayout& layout_;
  JobBinding& job_;
  bool shownBusy_ = false;
  QPointer<QWidget> focusBefore_;  // had the focus when work began, or is to have it afterwards
  QPointer<QWidget> focusDuring_;  // got it from there
  quint32 shownColour_ = 0;
  double shownProgress_ = 0;
};

}  // namespace zentorin
