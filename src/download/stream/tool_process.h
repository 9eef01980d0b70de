// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <chrono>

#include <QCoro/QCoroTask>

#include "base/cancel_token.h"

namespace zentorin {

// A recording program, started for one stream. It runs in a session of its own, which is ended as a
// whole with the object; the system ends it should this program die.
class ToolProcess : public QObject {
  Q_OBJECT

 public:
  explicit ToolProcess(QObject* parent = nullptr);
  ~ToolProcess() override;

  // `words`: the program's full path and its arguments. Whether it came up shows in Running().
  void Start(const QStringList& words, const QString& folder = {});

  // Before the start: standard error comes as Said(), all of it before Ended(). Else it is lost.
  void Listen() { process_.setStandardErrorFile({}); }
  void SetEnvironment(const QProcessEnvironment& environment) {
    process_.setProcessEnvironment(environment);
  }

  bool Running() const { return process_.state() != QProcess::NotRunning; }
  bool EndedWell() const;  // not by a signal from elsewhere, and with status 0
  bool WasKilled() const;  // by something else than this object, in the middle

  qint64 Id() const { return process_.processId(); }
  std::chrono::milliseconds SinceStart() const {
    return std::chrono::milliseconds(sinceStart_.elapsed());
  }

  void Kill();  // the whole session; the end itself comes as Ended()

  // Sleeps until the program ends, the time is over or a cancel. An earlier end cuts nothing short.
  QCoro::Task<void> Pause(CancelToken cancel, std::chrono::milliseconds time);
  QCoro::Task<bool> WaitForEnd(std::chrono::milliseconds time);  // true when it has ended

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
