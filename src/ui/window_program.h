// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <QCoro/QCoroTask>

#include "ui/list_claim.h"

namespace zentorin {

class AutoRun;
struct CommandLine;
class Workspace;
class frmMain;

// The life of the program with a window: start-up, the time in which the window lives, and the exit
// status. A start whose list is open in another window brings that one forward and ends. All
// references outlive it.
class WindowProgram : public QObject {
  Q_OBJECT

 public:
  WindowProgram(Workspace& workspace, AutoRun& autoRun, frmMain& window);

  // Starts up with the program's arguments, without its own name.
  QCoro::Task<void> Run(QStringList arguments);
  // A stop from outside: cancels what works and closes the window.
  void Stop();

 Q_SIGNALS:
  void Ended(int exitStatus);

 private:
  void TakeOutcome(bool ran);
  void ClaimOpenList();
  QCoro::Task<bool> IsOpenElsewhere(const CommandLine& line);

  Workspace& workspace_;
  AutoRun& autoRun_;
  frmMain& window_;
  ListClaim claim_;
  // An armed run does not mind a window on its list, and counts as none until it has finished.
  bool claims_ = false;
  int exitStatus_ = 0;
};

}  // namespace zentorin
