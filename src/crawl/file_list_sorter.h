// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "crawl/file_list_row.h"

namespace zentorin {

class FileList;

// Sorts the file list as text by one column. There is one direction for all columns, kept as the
// list's tag text; every sort turns it round, the first one is ascending.
class FileListSorter {
 public:
  void Sort(FileList& files, FileListRow::Column column);  // stable

  const QString& Tag() const { return tag_; }  // "1": ascending, "0": descending

 private:
  QString tag_;
};

}  // namespace zentorin
