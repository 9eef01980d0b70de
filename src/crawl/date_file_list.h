// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class Clock;
class DisplayClock;
class FileList;
class JobEditor;

// Keeps the file list of a date-format job: one row for each day of its window, rebuilt when the
// job is loaded and whenever its format or its window is edited. All references must outlive it.
class DateFileList : public QObject {
  Q_OBJECT

 public:
  DateFileList(JobEditor& job, FileList& files, const Clock& clock, const DisplayClock& shown,
               QObject* parent = nullptr);

 private:
  void Rebuild();

  JobEditor& job_;
  FileList& files_;
  const Clock& clock_;
  const DisplayClock& shown_;
};

}  // namespace zentorin
