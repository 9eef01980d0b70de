// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QProcess>
#include <QString>
#include <QStringList>

#include "tests/support/temp_dir.h"

namespace zentorin::test {

// One job of a list file: fields by their key, all others as a new job has them.
using JobFields = QList<QPair<QByteArray, QByteArray>>;

// The bytes of a list file with these jobs.
QByteArray ListFile(const QList<JobFields>& jobs);

// The real program in a process of its own, with no display and the program's folder `home`, while
// the test's event loop goes on serving.
class ProgramRun {
 public:
  // `connectTo` is the host map, see LoopbackServer::ConnectTo().
  ProgramRun(const TempDir& home, const QString& connectTo);
  ~ProgramRun();
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;

  // Before the start. The buses of the host are out of reach unless others are named.
  void SetVariable(const char* name, const QString& value);
  void Start(const QStringList& arguments);
  // Starts, waits for the end and answers the exit status; -1 after a crash.
  int Run(const QStringList& arguments);
  int WaitForEnd();
  // Waits until standard error holds that text; false when the program ended without it.
  bool WaitForError(const QString& text);
  void Send(int signal) const;

  QString Errors();
  QString Output();

 private:
  QProcess process_;
  QByteArray errors_;
};

// The program's log as text, each entry's date and time replaced by "DATE".
QString LogWithoutDates(const TempDir& home);

}  // namespace zentorin::test
