// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QItemSelection;

namespace zentorin {

class FileList;
class LineListView;

// Selection and current row live in the list; the view follows and reports the user's changes. It
// follows the current row of the work only as long as the one before it was in sight.
class FileListBinding : public QObject {
  Q_OBJECT

 public:
  FileListBinding(FileList& files, LineListView& view, QObject* parent = nullptr);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowSelection(int first, int last);
  void ShowCurrentRow(int row);
  void TakeSelection(const QItemSelection& selected, const QItemSelection& deselected);
  void TakeRanges(const QItemSelection& ranges, bool selected);
  void ForgetViewSelection();
  void ShowAll();

  FileList& files_;
  LineListView& view_;
  int followed_ = -1;       // the row that the list made current last
  bool following_ = false;  // the view is being changed by the list, not by the user
};

}  // namespace zentorin
