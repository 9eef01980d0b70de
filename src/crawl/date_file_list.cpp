// SPDX-License-Identifier: MIT
#include "crawl/date_file_list.h"

#include "base/clock.h"
#include "base/display_clock.h"
#include "crawl/file_list.h"
#include "jobs/date_template.h"
#include "jobs/job_editor.h"

namespace zentorin {

DateFileList::DateFileList(JobEditor& job, FileList& files, const Clock& clock,
                           const DisplayClock& shown, QObject* parent)
    : QObject(parent), job_(job), files_(files), clock_(clock), shown_(shown) {
  connect(&job, &JobEditor::Loaded, this, &DateFileList::Rebuild);
  connect(&job, &JobEditor::FieldEdited, this, &DateFileList::OnFieldEdited);
}

void DateFileList::OnFieldEdited(TargetUrlItem::Field field) {
  if (field == TargetUrlItem::Format || field == TargetUrlItem::Before ||
      field == TargetUrlItem::Opt) {
    Rebuild();
  }
}

void DateFileList::Rebuild() {
  const TargetUrlItem& fields = job_.Fields();
  const QString first = fields.BeforeElement(0);
  if (first.isEmpty()) {
    job_.SetBeforeDate(QString());
  } else {
    const DayWindow window = ParseDayWindow(first, fields.BeforeElement(1));
    job_.SetBeforeDate(DayWindowText(window, clock_.LocalNow().date()));
  }
  // The list of a job whose files are found by pattern is the crawl's.
  if (!fields.Flag(TargetUrlItem::Opt)) return;
  files_.ClearFileList();
  // A job without a format or a window names no files.
  if (!first.isEmpty() && !fields[TargetUrlItem::Format].isEmpty()) AppendDays();
}

void DateFileList::AppendDays() {
  const TargetUrlItem& fields = job_.Fields();
  const DayWindow window = ParseDayWindow(fields.BeforeElement(0), fields.BeforeElement(1));
  const QDateTime base = shown_.Now();
  for (int day = window.last; day >= window.first; --day) {
    const QString address = ExpandDateTemplates(fields[TargetUrlItem::Format], base.addDays(-day));
    FileListRow row;
    row.Set(FileListRow::Link, address);
    row.Set(FileListRow::Address, address);
    files_.Append(row);
  }
  files_.Flush();
}

}  // namespace zentorin
