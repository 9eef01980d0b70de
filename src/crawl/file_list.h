// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "base/change_throttle.h"
#include "crawl/file_list_row.h"

namespace zentorin {

// The file list (`lstUrl_All`): rows, which of them are selected, and the current row. Rows that a
// crawl adds are announced to views at most ten times a second; all other calls see every row
// at once. Rows are selected as they are added.
class FileList : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit FileList(QObject* parent = nullptr);

  int Count() const { return static_cast<int>(rows_.size()); }
  const FileListRow& Row(int row) const { return rows_[row].row; }
  bool IsSelected(int row) const { return rows_[row].selected; }
  int SelectedCount() const { return selectedCount_; }
  // -1 when there is none.
  int CurrentRow() const { return currentRow_; }

  // Adds a selected row; `makeCurrent` also makes it the current one.
  void Append(const FileListRow& row, bool makeCurrent = false);
  void SetRow(int row, const FileListRow& value);
  void SetSelected(int row, bool selected);
  void SelectAll();
  void DeselectAll();
  void SetCurrentRow(int row);
  // Removes every selected row in linear time.
  void RemoveSelected();
  // Puts the rows into the given order: order[i] is the old index of the row that comes to stand at
  // i. Selection and current row stay on their rows.
  void Reorder(const std::vector<int>& order);
  // Removes all rows (`ClearFileList`); does nothing to an empty list.
  void ClearFileList();

  // Announces rows that views do not know yet. Called by whoever hands the list to a view.
  void Flush();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  // DisplayRole: the column's text with harmless characters only.
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  // Selection of the rows first to last changed otherwise than by the view.
  void SelectionChanged(int first, int last);
  void CurrentRowChanged(int row);
  void Cleared();

 private:
  struct Entry {
    FileListRow row;
    bool selected = true;
  };

  std::vector<Entry> rows_;
  int announced_ = 0;  // rows that views know of
  int selectedCount_ = 0;
  int currentRow_ = -1;
  ChangeThrottle throttle_;
};

}  // namespace zentorin
