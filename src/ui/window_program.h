// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <QCoro/QCoroTask>

namespace zentorin {

class AutoRun;
class Workspace;
class frmMain;

// The life of the program with a window: start-up, the time in which the window lives, and the exit
// status. All references outlive it.
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

  Workspace& workspace_;
  AutoRun& autoRun_;
  frmMain& window_;
  int exitStatus_ = 0;
};

}  // namespace zentorin
