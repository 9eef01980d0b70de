// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "app/run_tally.h"

namespace zentorin {

class DesktopNotices;
class RunDriver;

// Tells the user's desktop of the end of each batch, with its counts. What is passed in outlives
// it.
class BatchNotice : public QObject {
  Q_OBJECT

 public:
  BatchNotice(RunDriver& driver, DesktopNotices& notices, QObject* parent = nullptr);

 private:
  void Show();

  RunDriver& driver_;
  DesktopNotices& notices_;
  RunTally tally_;
};

}  // namespace zentorin
