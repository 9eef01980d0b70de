// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <memory>
#include <utility>
#include <vector>

#include "base/change_throttle.h"
#include "crawl/file_list_row.h"

namespace zentorin {

// The file list (`lstUrl_All`). Views hear of rows that a crawl adds at most ten times a second;
// all other callers see every row at once.
class FileList : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit FileList(QObject* parent = nullptr);

  int Count() const { return static_cast<int>(rows_.size()); }
  const FileListRow& Row(int row) const { return rows_[row].row; }
  bool IsSelected(int row) const { return rows_[row].selected; }
  int SelectedCount() const { return selectedCount_; }
  int CurrentRow() const { return currentRow_; }  // -1 when there is none

  void Append(const FileListRow& row, bool makeCurrent = false);  // adds it selected
  void SetRow(int row, const FileListRow& value);                 // keeps its reason
  // Why the row could not be had; stays with it until it is set anew. Empty for none.
  QString Reason(int row) const;
  void SetReason(int row, const QString& reason);
  void SetSelected(int row, bool selected) { SelectRange(row, row, selected); }
  void SelectRange(int first, int last, bool selected);  // both included
  void SelectAll();
  void DeselectAll();
  void SelectOnly(const std::vector<int>& rows);  // exactly these; announced once
  void SetCurrentRow(int row);
  // In linear time. When the current row goes, the next that stays becomes current, else the last.
  void RemoveSelected();
  // `order[i]`: old index of the new row i. Selection and current row stay on their rows.
  void Reorder(const std::vector<int>& order);
  void ClearFileList();

  // Announces rows that views do not know yet. Called by whoever hands the list to a view.
  void Flush();

  QString ToolTip() const;  // "12個"; empty for an empty list

  // Rows that views have been told of; Count() knows them all.
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  // With harmless characters only. DisplayRole: the column's text. ToolTipRole: the row's reason.
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  // For rows that stay. Rows that come, move or are reset bring their selection along.
  void SelectionChanged(int first, int last);
  void CurrentRowChanged(int row);
  void Cleared();

 private:
  struct Entry {
    FileListRow row;
    bool selected = true;
    std::unique_ptr<const QString> reason;  // most rows have none
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
