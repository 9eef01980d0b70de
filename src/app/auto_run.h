// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <QCoro/QCoroTask>

#include "app/list_lock.h"

namespace zentorin {

struct CommandLine;
class Workspace;

// Why a run was refused a list that another run works on.
QString ListInUseText(const QString& listFile);

// The armed unattended run: counts down to its start time, runs the batch over the whole URL list,
// takes the step after it and returns to rest. A window binds its title and tray icon to the
// signals; with no display the terminal does.
class AutoRun : public QObject {
  Q_OBJECT

 public:
  enum class Phase { Idle, Armed, Running };
  static constexpr int kTickMs = 1000;  // `Timer_AutoStart`

  // `workspace` outlives the run.
  explicit AutoRun(Workspace& workspace, QObject* parent = nullptr);

  // Takes the start time, the action after the batch and the tray mode over and starts the
  // countdown on the open list. False when another unattended run works on that list.
  bool Arm(const CommandLine& line);

  Phase CurrentPhase() const { return phase_; }
  // `TrayMode`: the window waits as an icon in the notification area.
  bool TrayMode() const { return trayMode_; }
  // Seconds until the start, as of the last tick.
  int RemainingSeconds() const { return remainingSeconds_; }

  // One tick of the countdown. A start time that has passed today starts the run at once: there is
  // no roll-over to the next day.
  void Tick();

 Q_SIGNALS:
  // The window's new title.
  void TitleChanged(const QString& title);
  void TrayTipChanged(const QString& tip);
  // The window goes into the notification area, with an empty tip; or comes back from there.
  void MoveToTrayRequested();
  void RestoreFromTrayRequested();
  // Back at rest; `ran` is false when the countdown was cancelled.
  void Finished(bool ran);

 private:
  int SecondsUntilStart() const;
  void TakeCancel();
  void ShowText(const QString& text);
  void OfferCancel();
  bool LockOpenList();
  void Abandon();
  void GiveUp();
  void Reset();
  QCoro::Task<void> RunBatch();

  Workspace& workspace_;
  QTimer timer_;
  ListLock lock_;
  Phase phase_ = Phase::Idle;
  QString autoStartTime_;  // empty: at once
  bool trayMode_ = false;
  int remainingSeconds_ = 0;
};

}  // namespace zentorin
