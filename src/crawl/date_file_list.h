// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "jobs/target_url_item.h"

namespace zentorin {

class Clock;
class DisplayClock;
class FileList;
class JobEditor;

// Keeps the file list of a date-format job at one row for each day of its window, oldest first,
// whatever is loaded or edited. Also keeps the window shown as two dates.
class DateFileList : public QObject {
  Q_OBJECT

 public:
  DateFileList(JobEditor& job, FileList& files, const Clock& clock, const DisplayClock& shown,
               QObject* parent = nullptr);

 private:
  void OnFieldEdited(TargetUrlItem::Field field);
  void Rebuild();
  void AppendDays();

  JobEditor& job_;
  FileList& files_;
  const Clock& clock_;
  const DisplayClock& shown_;
};

}  // namespace zentorin
