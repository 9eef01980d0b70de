// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>

#include "jobs/target_url_item.h"

namespace zentorin {

// The user's jobs (`lstTargetUrl`). Display data is a job's line, harmless characters only.
class UrlList : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  int Count() const { return static_cast<int>(items_.size()); }
  const TargetUrlItem& Item(int row) const { return items_[row]; }

  // -1: none. Select() emits Selected() for the same row too, as a click on it reloads its fields.
  int SelectedRow() const { return selectedRow_; }
  void Select(int row);

  // Neither renumbers nor sets the tag.
  void Set(int row, const TargetUrlItem& item);
  void InsertBelow(int row, const TargetUrlItem& item);
  // Selects the job that takes the place, else the last one.
  void Remove(int row);
  bool MoveSelected(int step);  // -1 up, +1 down; false without a neighbour to swap with
  // Leaves no job selected and the tag as it is.
  void ReplaceAll(QList<TargetUrlItem> items);

  const QString& Tag() const { return tag_; }
  bool IsDirty() const { return !tag_.isEmpty(); }
  void SetDirty(bool dirty);

  const QString& CurrentListFile() const { return currentListFile_; }
  void SetCurrentListFile(const QString& path);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void Selected(int row);
  void CurrentListFileChanged();

 private:
  void Renumber();

  QList<TargetUrlItem> items_;
  int selectedRow_ = -1;
  QString tag_;              // "Dirty" or empty
  QString currentListFile_;  // absolute; empty for an untitled list
};

}  // namespace zentorin
