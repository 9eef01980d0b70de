// SPDX-License-Identifier: MIT
#include "jobs/url_list.h"

#include <utility>

#include "base/file_names.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void UrlList::Select(int row) {
  selectedRow_ = row >= 0 && row < Count() ? row : -1;
  Q_EMIT Selected(selectedRow_);
}

void UrlList::Set(int row, const TargetUrlItem& item) {
  if (row < 0 || row >= Count() || Item(row) == item) return;
  items_[row] = item;
  Q_EMIT dataChanged(index(row), index(row));
}

void UrlList::InsertBelow(int row, const TargetUrlItem& item) {
  const int position = qBound(0, row + 1, Count());
  beginInsertRows({}, position, position);
  items_.insert(position, item);
  if (selectedRow_ >= position) ++selectedRow_;
  endInsertRows();
  Renumber();
}

void UrlList::Remove(int row) {
  if (row < 0 || row >= Count()) return;
  beginRemoveRows({}, row, row);
  items_.removeAt(row);
  selectedRow_ = qMin(row, Count() - 1);
  endRemoveRows();
  Renumber();
  Select(selectedRow_);
  SetDirty(true);
}

bool UrlList::MoveSelected(int step) {
  const int from = selectedRow_;
  const int to = from + step;
  if (from < 0 || qAbs(step) != 1 || to < 0 || to >= Count()) return false;
  // The model's destination is the row before which the moved one comes to stand.
  beginMoveRows({}, from, from, {}, step > 0 ? to + 1 : to);
  items_.swapItemsAt(from, to);
  selectedRow_ = to;
  endMoveRows();
  Renumber();
  SetDirty(true);
  return true;
}

void UrlList::ReplaceAll(QList<TargetUrlItem> items) {
  beginResetModel();
  items_ = std::move(items);
  selectedRow_ = -1;
  endResetModel();
  Q_EMIT Selected(-1);
}

void UrlList::SetDirty(bool dirty) {
  tag_ = dirty ? u"Dirty"_s : QString();
}

void UrlList::SetCurrentListFile(const QString& path) {
  currentListFile_ = path;
  Q_EMIT CurrentListFileChanged();
}

int UrlList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Count();
}

QVariant UrlList::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid() || index.row() >= Count()) return {};
  // The tabs stay: the view sets its columns by them.
  QStringList fields = Item(index.row()).ToLine().split(u'\t');
  for (QString& field : fields) field = EscapeForDisplay(field);
  return fields.join(u'\t');
}

void UrlList::Renumber() {
  int first = -1;
  int last = -1;
  for (int row = 0; row < Count(); ++row) {
    const QString number = DisplayNumber(row);
    if (Item(row)[TargetUrlItem::Number] == number) continue;
    items_[row].Set(TargetUrlItem::Number, number);
    if (first < 0) first = row;
    last = row;
  }
  if (first >= 0) Q_EMIT dataChanged(index(first), index(last));
}

}  // namespace zentorin
