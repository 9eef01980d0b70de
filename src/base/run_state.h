// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace zentorin {

// The flags by which everything that runs is coordinated: the user's wish to stop, whether any row
// failed, and which kind of run is under way. One object per window, owned by the workspace and
// older than every task that reads it.
class RunState : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // True from the moment the user asks to stop until the next command clears it.
  bool CancelRequested() const { return cancelRequested_; }

  // Sets the flag and emits Cancelled() in the same call, so that transfers, sleeps and waits for
  // processes end at once. Emits nothing when the flag is set already.
  void RequestCancel();
  void ClearCancel() { cancelRequested_ = false; }

  // Set by any row whose result is an error; cleared when a run starts.
  bool ErrorFlag() const { return errorFlag_; }
  void SetErrorFlag(bool set) { errorFlag_ = set; }

  // "一括" while the batch runs one of its jobs, empty otherwise.
  const QString& RunMode() const { return runMode_; }
  void SetRunMode(const QString& mode) { runMode_ = mode; }
  bool IsBatch() const;

 Q_SIGNALS:
  void Cancelled();

 private:
  bool cancelRequested_ = false;
  bool errorFlag_ = false;
  QString runMode_;
};

}  // namespace zentorin
