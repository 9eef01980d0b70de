// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include "base/descriptor.h"

namespace zentorin {

// Turns SIGINT, SIGTERM, and SIGHUP unless it is ignored as under nohup, into a signal of the event
// loop. The second one ends the process at once with status 130. A write to a pipe whose reader has
// gone no longer ends the process. At most one object lives at a time.
class StopSignals : public QObject {
  Q_OBJECT

 public:
  // Catches them before there is an application. Until there is an object, the first one ends the
  // process too. Without this call the object does it.
  static void Catch();

  explicit StopSignals(QObject* parent = nullptr);
  ~StopSignals() override;

 Q_SIGNALS:
  void StopRequested();

 private:
  void Read();

  Descriptor readEnd_;
  QSocketNotifier notifier_{QSocketNotifier::Read};
};

}  // namespace zentorin
