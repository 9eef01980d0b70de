// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace zentorin {

// Turns the system's wishes to stop (SIGINT, SIGTERM, and SIGHUP unless it is ignored as under
// nohup) into a signal of the event loop. The second one ends the process at once with status 130,
// also when the event loop stands still. A write to a pipe whose reader has gone no longer ends the
// process. At most one object lives at a time.
class StopSignals : public QObject {
  Q_OBJECT

 public:
  // Catches them from now on, before there is an application: nothing has been begun, so until
  // there is an object the first one ends the process, too. Without this call the object does it.
  static void Catch();

  explicit StopSignals(QObject* parent = nullptr);
  ~StopSignals() override;

 Q_SIGNALS:
  void StopRequested();

 private:
  void Read();

  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zentorin
