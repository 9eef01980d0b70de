// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Keeps a second unattended run off a list file while one works on it. The system drops the lock
// when the process ends in whatever way, so a crash never leaves one behind.
//
// Two locks are taken: one on the list file itself, which also runs with other program folders and
// other users meet, and one in the program's folder that is named after the file's path, which
// still holds after an editor has put a new file in the list's place.
class ListLock {
 public:
  ListLock() = default;
  ~ListLock();
  ListLock(const ListLock&) = delete;
  ListLock& operator=(const ListLock&) = delete;

  // False when another run holds the list. A lock that this file system does not offer is passed
  // over: it must not keep a run from working.
  bool Acquire(const QString& listFile, const QString& programFolder);
  void Release();

 private:
  int listDescriptor_ = -1;
  int nameDescriptor_ = -1;
  QByteArray nameFile_;
};

}  // namespace zentorin
