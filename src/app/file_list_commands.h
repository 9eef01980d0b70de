// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

#include "crawl/file_list_sorter.h"

namespace zentorin {

class Workspace;

// The commands on the file list. All of them may be given while a run walks its rows.
class FileListCommands {
 public:
  explicit FileListCommands(Workspace& workspace) : workspace_(workspace) {}

  void SelectAll();
  void OpenSite();                 // the current row's file, in the browser
  QCoro::Task<void> OpenSource();  // the same as text
  QCoro::Task<void> Play();        // the current row's file, unless several are selected
  QString CopiedText() const;      // the selected rows in list order, each with CR LF behind it
  QCoro::Task<void> Delete();      // every selected row, when a row is current
  void Sort(FileListRow::Column column);
  const QString& SortTag() const { return sorter_.Tag(); }

 private:
  QString CurrentAddress() const;

  Workspace& workspace_;
  FileListSorter sorter_;
};

}  // namespace zentorin
