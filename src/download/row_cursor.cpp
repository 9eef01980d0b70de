// SPDX-License-Identifier: MIT
#include "download/row_cursor.h"

#include <algorithm>

namespace zentorin {

RowCursor::RowCursor(FileList& files) : files_(files) {
  connect(&files, &FileList::rowsRemoved, this, &RowCursor::Restart);
  connect(&files, &FileList::layoutChanged, this, &RowCursor::Restart);
  connect(&files, &FileList::modelReset, this, &RowCursor::Restart);
}

int RowCursor::Next() {
  last_ = SelectedFrom(next_);
  if (last_ >= 0) next_ = last_ + 1;
  return last_;
}

int RowCursor::NextAhead() {
  const int row = SelectedFrom(std::max(ahead_, next_));
  if (row >= 0) ahead_ = row + 1;
  return row;
}

int RowCursor::SelectedFrom(int row) const {
  while (row < files_.Count() && !files_.IsSelected(row)) ++row;
  return row < files_.Count() ? row : -1;
}

int RowCursor::Find(const FileListRow& row) const {
  if (last_ >= 0 && last_ < files_.Count() && files_.Row(last_) == row) return last_;
  for (int index = 0; index < files_.Count(); ++index) {
    if (files_.Row(index) == row) return index;
  }
  return -1;
}

}  // namespace zentorin
