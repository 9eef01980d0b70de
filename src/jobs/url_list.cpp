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

void UrlList::SetLine(int row, const QString& line) {
  if (row < 0 || row >= Count() || lines_[row] == line) return;
  lines_[row] = line;
  Q_EMIT dataChanged(index(row), index(row));
}

void UrlList::InsertBelow(int row, const TargetUrlItem& item) {
  const int position = qBound(0, row + 1, Count());
  beginInsertRows({}, position, position);
  lines_.insert(position, item.ToLine());
  if (selectedRow_ >= position) ++selectedRow_;
  endInsertRows();
  Renumber();
}

void UrlList::Remove(int row) {
  if (row < 0 || row >= Count()) return;
  beginRemoveRows({}, row, row);
  lines_.removeAt(row);
  selectedRow_ = qMin(row, Count() - 1);
  endRemoveRows();
  Renumber();
  Select(qMin(row, Count() - 1));
  SetDirty(true);
}

bool UrlList::MoveSelected(int step) {
  const int from = selectedRow_;
  const int to = from + step;
  if (from < 0 || qAbs(step) != 1 || to < 0 || to >= Count()) return false;
  // The model's destination is the row before which the moved one comes to stand.
  beginMoveRows({}, from, from, {}, step > 0 ? to + 1 : to);
  lines_.swapItemsAt(from, to);
  selectedRow_ = to;
  endMoveRows();
  Renumber();
  SetDirty(true);
  return true;
}

void UrlList::ReplaceAll(QStringList lines) {
  beginResetModel();
  lines_ = std::move(lines);
  selectedRow_ = -1;
  endResetModel();
  Q_EMIT Selected(-1);
}

void UrlList::SetDirty(bool dirty) {
  if (dirty == IsDirty()) return;
  tag_ = dirty ? u"Dirty"_s : QString();
  Q_EMIT DirtyChanged(dirty);
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
  QStringList fields = lines_[index.row()].split(u'\t');
  for (QString& field : fields) field = EscapeForDisplay(field);
  return fields.join(u'\t');
}

void UrlList::Renumber() {
  int first = -1;
  int last = -1;
  for (int row = 0; row < Count(); ++row) {
    const QString number = DisplayNumber(row);
    const QString& line = std::as_const(lines_)[row];
    const qsizetype tab = line.indexOf(u'\t');
    if (QStringView(line).left(tab < 0 ? line.size() : tab) == number) continue;
    TargetUrlItem item = TargetUrlItem::FromLine(line);
    item.Set(TargetUrlItem::Number, number);
    lines_[row] = item.ToLine();
    if (first < 0) first = row;
    last = row;
  }
  if (first >= 0) Q_EMIT dataChanged(index(first), index(last));
}

}  // namespace zentorin
