// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace zentorin {

struct ProgramRequest {
  QString program;        // full path
  QStringList arguments;  // words; no shell takes part
  QString workingFolder;  // empty: the starter's own
};

enum class ProgramStart {
  Running,         // it came up and still runs
  EndedWell,       // it ended with status 0, as programs do that hand over to a running one
  EndedWithError,  // it crashed, or ended with another status
  NotStarted,      // it could not be started
  TimedOut,        // the system has not brought it up within the time that is left for it
};

// `done` is called once, perhaps before the call returns, never after the starter's end.
class ProgramStarter {
 public:
  ProgramStarter() = default;
  ProgramStarter(const ProgramStarter&) = delete;
  ProgramStarter& operator=(const ProgramStarter&) = delete;
  virtual ~ProgramStarter() = default;

  // The program outlives this one.
  virtual void Start(const ProgramRequest& request, std::function<void(ProgramStart)> done) = 0;
  virtual bool ShellOpen(const QString& target) = 0;  // false: the system has no opener

  // Tells false when no file manager answers.
  virtual void ShowFolder(const QString& path, std::function<void(bool)> done) = 0;
};

}  // namespace zentorin
