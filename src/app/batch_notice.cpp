// SPDX-License-Identifier: MIT
#include "app/batch_notice.h"

#include "download/run_driver.h"
#include "power/desktop_notices.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

ExitStatus OutcomeOf(const RunDriver& driver) {
  if (driver.WasCancelled()) return kExitCancelled;
  return driver.AnyFailure() ? kExitFailures : kExitDone;
}

}  // namespace

BatchNotice::BatchNotice(RunDriver& driver, DesktopNotices& notices, QObject* parent)
    : QObject(parent), driver_(driver), notices_(notices) {
  connect(&driver, &RunDriver::BatchStarted, this, [this] { tally_ = RunTally(); });
  connect(&driver, &RunDriver::JobStarted, this, [this] { tally_.AddJob(); });
  connect(&driver, &RunDriver::RowFinished, this,
          [this](const FinishedRow& row) { tally_.AddRow(row, QString()); });
  connect(&driver, &RunDriver::BatchEnded, this, &BatchNotice::Show);
}

void BatchNotice::Show() {
  notices_.Show(u"一括ダウンロード"_s, tally_.Summary(OutcomeOf(driver_)).first());
}

}  // namespace zentorin
