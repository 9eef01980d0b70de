// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "crawl/file_list.h"

namespace zentorin {

// Walks the selected rows in list order while the user may sort the list or delete rows of it. A
// row that was dealt with is deselected by the caller, so a list that was changed is simply walked
// from its top again.
class RowCursor : public QObject {
 public:
  explicit RowCursor(FileList& files);

  // The next selected row; -1 when there is none.
  int Next();
  // The selected row that Next() would answer if the list stayed as it is; -1 when there is none.
  int Peek() const;
  // Where the row last answered by Next() is now, known by its content; -1 when it is gone.
  int Find(const FileListRow& row) const;

 private:
  void Restart() { next_ = 0; }

  FileList& files_;
  int next_ = 0;
  int last_ = -1;
};

}  // namespace zentorin
