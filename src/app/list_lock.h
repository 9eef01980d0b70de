// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QObject>

#include <QCoro/QCoroTask>

#include "base/descriptor.h"

namespace zentorin {

// Two locks of a list file, which do not mind each other. The system drops them at the process's
// end, so a crash leaves none behind. One that the file system does not offer counts as acquired.

// Keeps a second unattended run off the list: by the list file itself, which other users meet too,
// and by a file in the program's folder, which stays when an editor replaces the list.
class RunLock {
 public:
  RunLock() = default;
  RunLock(const RunLock&) = delete;
  RunLock& operator=(const RunLock&) = delete;
  ~RunLock() { Release(); }

  // Releases the former list. False when another run holds this one.
  bool Acquire(const QString& listFile, const QString& programFolder);
  void Release();

 private:
  Descriptor list_;
  Descriptor key_;
  QString keyFile_;
};

// Makes one window the window of the list; a second start brings it forward over a socket. Both lie
// where nobody but the user can reach; without such a folder every window gets its list.
class WindowLock : public QObject {
  Q_OBJECT

 public:
  WindowLock();

  // Releases the former list; an empty path does only that. False when another window holds it.
  bool Acquire(const QString& listFile);
  QCoro::Task<bool> RaiseHolder(QString listFile);  // false when it does not answer

 Q_SIGNALS:
  // The token is the asker's right to raise a window on the desktop; it may be empty.
  void RaiseRequested(const QByteArray& activationToken);

 private:
  QString BasePath(const QString& listFile) const;
  void AnswerNext();

  QString folder_;  // empty: there is none to be trusted
  QString held_;
  Descriptor lock_;
  QLocalServer server_;  // goes before the lock
};

}  // namespace zentorin
