// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "base/activity.h"

namespace zentorin {

class FileList;
class JobBinding;
class MainLayout;
struct MainControls;

// Turns the program's activity into what the window shows of it: status line, current file,
// progress, counters, cancel button, after-batch box, and the lock on the editing surface while
// work runs. Activity changes up to ten times a second, so only what is another is touched.
class StatusBinding : public QObject {
  Q_OBJECT

 public:
  StatusBinding(Activity& activity, const FileList& files, MainControls& controls,
                MainLayout& layout, JobBinding& job, QObject* parent = nullptr);

  bool eventFilter(QObject* watched, QEvent* event) override;

  // Words behind the status line's own, shown as its tool tip; a text without mark-up.
  void SetDetails(const QString& details);

 Q_SIGNALS:
  // Controls were shown, hidden or renamed: the window has to lay itself out again.
  void LayoutNeeded();

 private:
  void Show();
  void ShowMessage();
  void ShowMessageColour();
  void ShowDetails();
  void ShowProgress();
  void ShowRowCount();
  void ShowBusy();
  void Lock(bool enabled);
  void ShowAfterBatch();
  QWidget* Focused() const;
  // Shows or hides a control whose room others take.
  void SetShown(QWidget* control, bool shown);

  Activity& activity_;
  const FileList& files_;
  MainControls& c_;
  MainLayout& layout_;
  JobBinding& job_;
  QString details_;
  bool shownBusy_ = false;
  QPointer<QWidget> focusBefore_;  // had the focus when work began
  QPointer<QWidget> focusDuring_;  // got it from there
  Tone shownTone_ = Tone::Note;
};

}  // namespace zentorin
