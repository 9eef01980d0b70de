// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

namespace zentorin {

class AutoRun;
class Terminal;
class Workspace;
struct Place;
struct FinishedRow;
struct RunOutcome;

// Shows an unattended run on standard error. A terminal has one line that is drawn anew, and above
// it jobs and faults. A pipe gets a line for each job and row, and a sign of life now and then.
class TerminalProgress : public QObject {
  Q_OBJECT

 public:
  TerminalProgress(Workspace& workspace, AutoRun& autoRun, Terminal& terminal,
                   QObject* parent = nullptr);

  void Close(const RunOutcome& outcome);

 private:
  void ShowCountdown(const QString& text);
  void ShowChange();
  void ShowJob(Place job);
  void ShowRow(const FinishedRow& row);
  void ShowMessage();
  void ShowPowerAnswer(const QString& text);
  void Draw();
  QString WorkText() const;
  QString BytesText() const;
  void Print(const QString& line);

  Workspace& workspace_;
  AutoRun& autoRun_;
  Terminal& terminal_;
  QElapsedTimer sinceLine_;
  int shownJob_ = 0;
  QStringList folders_;  // that files were saved into, in order
  QSet<QString> knownFolders_;
  int shownMessage_ = 0;
  QString lastRowText_;
  int announcedSeconds_ = -1;  // of the countdown, on a pipe
};

}  // namespace zentorin
