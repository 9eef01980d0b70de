// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QItemSelection;

namespace zentorin {

class FileList;
class LineListView;

// Shows the file list in its view and keeps the two selections and current rows the same. The list
// is where they live; the view only follows and reports the user's changes. The user's scroll
// position stays: the view follows the current row of the work only as long as the one before it
// was in sight. Both references must outlive the binding.
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
