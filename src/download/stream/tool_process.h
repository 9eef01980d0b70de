// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <chrono>

#include <QCoro/QCoroTask>

namespace zentorin {

class RunState;

// A recording program that is started for one stream and never outlives it: it runs in a session of
// its own, which is ended as a whole with the object, and the system ends it should this program
// die.
class ToolProcess : public QObject {
  Q_OBJECT

 public:
  explicit ToolProcess(QObject* parent = nullptr);
  ~ToolProcess() override;

  // `words`: the program's full path and its arguments. Whether it came up shows in Running().
  void Start(const QStringList& words, const QString& folder = {});

  // Before the start: what the program says on its standard error comes as Said(), all of it before
  // Ended(). Without this nobody listens.
  void Listen() { process_.setStandardErrorFile({}); }
  void SetEnvironment(const QProcessEnvironment& environment) {
    process_.setProcessEnvironment(environment);
  }

  bool Running() const { return process_.state() != QProcess::NotRunning; }
  // It ended as it should: not by a signal from elsewhere, and with status 0.
  bool EndedWell() const;
  // Something other than this object ended it in the middle.
  bool WasKilled() const;

  qint64 Id() const { return process_.processId(); }
  // Since the last Start().
  std::chrono::milliseconds SinceStart() const {
    return std::chrono::milliseconds(sinceStart_.elapsed());
  }

  // Ends the whole session at once. The end itself comes as Ended().
  void Kill();

  // Sleeps until the program ends, the time is over or a cancel is requested. What ended before is
  // not waited for: then only the time counts.
  QCoro::Task<void> Pause(RunState& state, std::chrono::milliseconds time);
  // True when it has ended, at the latest when the time is over; a cancel changes nothing.
  QCoro::Task<bool> WaitForEnd(std::chrono::milliseconds time);

 Q_SIGNALS:
  void Ended();
  void Said(const QByteArray& bytes);

 private:
  QProcess process_;
  QElapsedTimer sinceStart_;
  qint64 session_ = 0;  // its process group; 0 before it came up
  bool empty_ = false;  // nothing runs in that group any more: its number may be another's
  bool killed_ = false;
};

}  // namespace zentorin
