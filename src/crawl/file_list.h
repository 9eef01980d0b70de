// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <utility>
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
  void SetSelected(int row, bool selected) { SelectRange(row, row, selected); }
  // The rows first to last, both included.
  void SelectRange(int first, int last, bool selected);
  void SelectAll();
  void DeselectAll();
  // Leaves exactly these rows selected and announces that once.
  void SelectOnly(const std::vector<int>& rows);
  void SetCurrentRow(int row);
  // Removes every selected row in linear time. When the current row is among them, the next row
  // that stays becomes current, else the last one. Views hear of a few removed ranges or of a
  // reset.
  void RemoveSelected();
  // Puts the rows into the given order: order[i] is the old index of the row that comes to stand at
  // i. Selection and current row stay on their rows.
  void Reorder(const std::vector<int>& order);
  // Removes all rows (`ClearFileList`); does nothing to an empty list.
  void ClearFileList();

  // Announces rows that views do not know yet. Called by whoever hands the list to a view.
  void Flush();

  // The list's tooltip: "12個", nothing for an empty list.
  QString ToolTip() const;

  // Rows that views have been told of; Count() knows them all.
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  // DisplayRole: the column's text with harmless characters only.
  QVariant data(const QModelIndex& index, int role) const override;
  // The captions of the columns and the hint that a click sorts.
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 Q_SIGNALS:
  // The selection of some of the rows first to last changed. Rows that come with rowsInserted() or
  // a reset bring their selection along; so does a row that moves.
  void SelectionChanged(int first, int last);
  void CurrentRowChanged(int row);
  void Cleared();

 private:
  struct Entry {
    FileListRow row;
    bool selected = true;
  };

  void AnnounceCurrentRow();
  std::vector<std::pair<int, int>> SelectedRanges() const;
  void EraseSelected();

  std::vector<Entry> rows_;
  int announced_ = 0;          // rows that views know of
  int announcedCurrent_ = -1;  // current row that views know of
  int selectedCount_ = 0;
  int currentRow_ = -1;
  ChangeThrottle throttle_;
};

}  // namespace zentorin
