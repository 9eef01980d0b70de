// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QStringList>

#include "jobs/target_url_item.h"

namespace zentorin {

// The user's jobs (`lstTargetUrl`): one line per `TargetUrlItem`, the selected row, the file the
// list came from and whether it has unsaved changes. Display data (Qt::DisplayRole) is the line as
// shown, harmless characters only; the line itself is Line().
class UrlList : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  int Count() const { return static_cast<int>(lines_.size()); }
  const QString& Line(int row) const { return lines_[row]; }
  TargetUrlItem Item(int row) const { return TargetUrlItem::FromLine(lines_[row]); }

  // -1 when no job is selected. Select() emits Selected() also when the row stays the same, as a
  // click on the selected row reloads its fields.
  int SelectedRow() const { return selectedRow_; }
  void Select(int row);

  // Replaces one line as it stands; neither renumbers nor marks the list.
  void SetLine(int row, const QString& line);
  // Inserts below `row` (-1: at the top) and renumbers; keeps the selection on its job.
  void InsertBelow(int row, const TargetUrlItem& item);
  // Removes and renumbers. The job at the same position is selected then, the new last one when
  // the removed one was last, none when the list is empty; Selected() is emitted. Sets "Dirty".
  void Remove(int row);
  // Swaps the selected job with its neighbour (step -1 up, +1 down), renumbers, keeps the moved job
  // selected and sets "Dirty". False at the ends of the list and without a selection.
  bool MoveSelected(int step);
  // Replaces all lines, leaves no job selected and does not touch the mark.
  void ReplaceAll(QStringList lines);

  // "Dirty" or empty.
  const QString& Tag() const { return tag_; }
  bool IsDirty() const { return !tag_.isEmpty(); }
  void SetDirty(bool dirty);

  // Absolute path of the open file; empty for an untitled list.
  const QString& CurrentListFile() const { return currentListFile_; }
  void SetCurrentListFile(const QString& path);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void Selected(int row);
  void DirtyChanged(bool dirty);
  void CurrentListFileChanged();

 private:
  void Renumber();

  QStringList lines_;
  int selectedRow_ = -1;
  QString tag_;
  QString currentListFile_;
};

}  // namespace zentorin
