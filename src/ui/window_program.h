// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <QCoro/QCoroTask>

#include "app/list_lock.h"

namespace zentorin {

class AutoRun;
struct CommandLine;
struct RunOutcome;
class Workspace;
class frmMain;

// The life of the program with a window. A start whose list is open in another window brings that
// one forward and ends.
class WindowProgram : public QObject {
  Q_OBJECT

 public:
  WindowProgram(Workspace& workspace, AutoRun& autoRun, frmMain& window);

  QCoro::Task<void> Run(QStringList arguments);  // without the program's own name
  void Stop();                                   // from outside

 Q_SIGNALS:
  void Ended(int exitStatus);

 private:
  void TakeOutcome(const RunOutcome& outcome);
  void LockOpenList();
  QCoro::Task<bool> IsOpenElsewhere(const CommandLine& line);

  Workspace& workspace_;
  AutoRun& autoRun_;
  frmMain& window_;
  WindowLock lock_;
  // An armed run does not mind a window on its list, and counts as none until it has finished.
  bool locks_ = false;
  int exitStatus_ = 0;
};

}  // namespace zentorin
