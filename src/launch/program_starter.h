// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace zentorin {

// A program to start, by its words; no shell takes part.
struct ProgramRequest {
  QString program;  // full path
  QStringList arguments;
  QString workingFolder;  // empty: the starter's own
};

// What became of a program in its first moments.
enum class ProgramStart {
  Running,         // it came up and still runs
  EndedWell,       // it ended with status 0, as programs do that hand over to a running one
  EndedWithError,  // it crashed, or ended with another status
  NotStarted,      // it could not be started
  TimedOut,        // the system has not brought it up within the time that is left for it
};

// The world that things are opened in: processes and the desktop's file manager. What `done`
// refers to must outlive the starter; it is called once, perhaps before the call returns, and never
// after the starter's end.
class ProgramStarter {
 public:
  ProgramStarter() = default;
  ProgramStarter(const ProgramStarter&) = delete;
  ProgramStarter& operator=(const ProgramStarter&) = delete;
  virtual ~ProgramStarter() = default;

  // Starts the program and reports what became of it. It outlives this one.
  virtual void Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) = 0;

  // Hands a target to the desktop's own opener. False when the system has none.
  virtual bool ShellOpen(const QString& target) = 0;

  // Asks the desktop's file manager to show a folder; false when there is none that answers.
  virtual void ShowFolder(const QString& path, std::function<void(bool)> done) = 0;
};

}  // namespace zentorin
