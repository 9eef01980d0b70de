// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <optional>

#include <QCoro/QCoroTask>

#include "app/list_lock.h"
#include "base/activity.h"
#include "download/run_outcome.h"

namespace zentorin {

struct CommandLine;
class Workspace;

QString ListInUseText(const QString& listFile);  // why a run was refused this list

// The armed unattended run: counts down to its start time, runs the batch over the whole URL list,
// takes the step after it and returns to rest.
class AutoRun : public QObject {
  Q_OBJECT

 public:
  enum class State { Idle, Armed, Running };
  static constexpr int kTickMs = 1000;  // `Timer_AutoStart`

  explicit AutoRun(Workspace& workspace, QObject* parent = nullptr);

  // False when another unattended run works on the open list.
  bool Arm(const CommandLine& line);

  void GiveUp();  // does nothing unless armed

  State CurrentState() const { return state_; }
  // `TrayMode`: the window waits as a tray icon. Only tests read it; kept as the named field.
  bool TrayMode() const { return trayMode_; }
  int RemainingSeconds() const { return remainingSeconds_; }  // as of the last tick

  // A start time that has passed today starts the run at once: none waits for the next day.
  void Tick();

 Q_SIGNALS:
  void TitleChanged(const QString& title);
  void TrayTipChanged(const QString& tip);
  void MoveToTrayRequested();  // the tip is empty then
  void RestoreFromTrayRequested();
  void Finished(const zentorin::RunOutcome& outcome);  // back at rest

 private:
  int SecondsUntilStart() const;
  void ShowText(const QString& text);
  void ShowBatchEnd();
  bool LockOpenList();
  void Reset();
  QCoro::Task<void> RunBatch();

  Workspace& workspace_;
  QTimer timer_;
  RunLock lock_;
  State state_ = State::Idle;
  std::optional<Activity::Scope> armed_;
  QString autoStartTime_;  // empty: at once
  bool trayMode_ = false;
  int remainingSeconds_ = 0;
};

}  // namespace zentorin
