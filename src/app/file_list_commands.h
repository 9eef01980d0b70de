// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "crawl/file_list_sorter.h"

namespace zentorin {

class Workspace;

// The commands on the file list; all of them may be given while a run walks its rows. The workspace
// outlives the commands and every task.
class FileListCommands {
 public:
  explicit FileListCommands(Workspace& workspace) : workspace_(workspace) {}

  void SelectAll();
  // The current row's file in the browser or as text.
  void OpenSite();
  QCoro::Task<void> OpenSource();
  // Plays or views the current row's file, unless several rows are selected.
  QCoro::Task<void> Play();
  // The selected rows in list order, each with CR LF behind it.
  QString CopiedText() const;
  // Every selected row, when a row is current.
  QCoro::Task<void> Delete();
  void Sort(FileListRow::Column column);
  const QString& SortTag() const { return sorter_.Tag(); }

 private:
  QString CurrentAddress() const;

  Workspace& workspace_;
  FileListSorter sorter_;
};

}  // namespace zentorin
