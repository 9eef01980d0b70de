// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include "app/run_tally.h"
#include "base/change_throttle.h"

namespace zentorin {

class AutoRun;
class Terminal;
class Workspace;
struct FinishedRow;

// Shows an unattended run on standard error. A terminal has one line that is drawn anew as often as
// the board tells its progress and for any other change at most ten times a second, and above it
// the jobs and whatever went wrong. A pipe gets a line for each job and each finished row, and a
// sign of life now and then. Everything passed in outlives it.
class TerminalProgress : public QObject {
  Q_OBJECT

 public:
  TerminalProgress(Workspace& workspace, AutoRun& autoRun, Terminal& terminal,
                   QObject* parent = nullptr);

  // Ends the refreshed line and prints the closing lines.
  void Close(ExitStatus status);

 private:
  void ShowCountdown(const QString& text);
  void ShowJob(int row);
  void ShowRow(const FinishedRow& row);
  void ShowStatus();
  void ShowPowerAnswer(const QString& text);
  void ShowProgress();
  void Draw();
  bool IsCrawling() const;
  QString WorkText() const;
  QString BytesText() const;
  void Print(const QString& line);

  Workspace& workspace_;
  AutoRun& autoRun_;
  Terminal& terminal_;
  RunTally tally_;
  ChangeThrottle throttle_;
  QElapsedTimer sinceLine_;
  QString lastFault_;
  QString lastRowText_;
  int announcedSeconds_ = -1;  // of the countdown, on a pipe
};

}  // namespace zentorin
