// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "crawl/file_list.h"

namespace zentorin {

// Walks the selected rows in list order while the user may sort the list or delete rows of it. The
// caller deselects each row it has dealt with: a changed list is walked from its top again.
class RowCursor : public QObject {
 public:
  explicit RowCursor(FileList& files);

  int Next();  // -1 when there is none
  // The selected rows behind the one last answered, each once, for what can be done ahead of their
  // turn; -1 when there is none.
  int NextAhead();
  void StepBack() { --ahead_; }  // the row is to be answered once more
  // Where the row last answered by Next() is now, known by its content; -1 when it is gone.
  int Find(const FileListRow& row) const;

 private:
  void Restart() { next_ = ahead_ = 0; }
  int SelectedFrom(int row) const;

  FileList& files_;
  int next_ = 0;
  int ahead_ = 0;
  int last_ = -1;
};

}  // namespace zentorin
