// SPDX-License-Identifier: MIT
#include "crawl/file_list.h"

#include <algorithm>

#include "base/file_names.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// Up to this many removed ranges are told one by one, so that a view keeps its place. Each costs a
// pass over the rows; more of them are told as one reset.
constexpr size_t kMaxToldRanges = 8;

}  // namespace

FileList::FileList(QObject* parent) : QAbstractTableModel(parent) {
  connect(&throttle_, &ChangeThrottle::Due, this, &FileList::Flush);
}

void FileList::Append(const FileListRow& row, bool makeCurrent) {
  rows_.push_back({row, true, nullptr});
  ++selectedCount_;
  if (makeCurrent) currentRow_ = Count() - 1;
  throttle_.Touch();
}

void FileList::Flush() {
  if (announced_ < Count()) {
    beginInsertRows({}, announced_, Count() - 1);
    announced_ = Count();
    endInsertRows();
  }
  AnnounceCurrentRow();
}

void FileList::AnnounceCurrentRow() {
  if (announcedCurrent_ == currentRow_) return;
  announcedCurrent_ = currentRow_;
  Q_EMIT CurrentRowChanged(currentRow_);
}

void FileList::SetRow(int row, const FileListRow& value) {
  rows_[row].row = value;
  if (row >= announced_) return;
  Q_EMIT dataChanged(index(row, 0), index(row, FileListRow::kColumnCount - 1));
}

QString FileList::Reason(int row) const {
  const auto& reason = rows_[row].reason;
  return reason ? *reason : QString();
}

void FileList::SetReason(int row, const QString& reason) {
  auto& kept = rows_[row].reason;
  if (reason.isEmpty()) {
    kept.reset();
  } else {
    kept = std::make_unique<const QString>(reason);
  }
}

void FileList::SelectRange(int first, int last, bool selected) {
  bool changed = false;
  for (int row = first; row <= last; ++row) {
    if (rows_[row].selected == selected) continue;
    rows_[row].selected = selected;
    selectedCount_ += selected ? 1 : -1;
    changed = true;
  }
  if (changed && first < announced_) {
    Q_EMIT SelectionChanged(first, std::min(last, announced_ - 1));
  }
}

void FileList::SelectAll() {
  SelectRange(0, Count() - 1, true);
}

void FileList::DeselectAll() {
  SelectRange(0, Count() - 1, false);
}

void FileList::SelectOnly(const std::vector<int>& rows) {
  for (Entry& entry : rows_) entry.selected = false;
  for (const int row : rows) rows_[row].selected = true;
  selectedCount_ = static_cast<int>(rows.size());
  if (announced_ > 0) Q_EMIT SelectionChanged(0, announced_ - 1);
}

void FileList::SetCurrentRow(int row) {
  currentRow_ = row;
  Flush();
}

// From the last range to the first, so that positions stay valid.
std::vector<std::pair<int, int>> FileList::SelectedRanges() const {
  std::vector<std::pair<int, int>> ranges;
  for (int row = Count() - 1; row >= 0; --row) {
    if (!rows_[row].selected) continue;
    if (!ranges.empty() && ranges.back().first == row + 1) {
      ranges.back().first = row;
    } else {
      ranges.emplace_back(row, row);
    }
  }
  return ranges;
}

void FileList::EraseSelected() {
  const auto ranges = SelectedRanges();
  if (ranges.size() > kMaxToldRanges) {
    beginResetModel();
    std::erase_if(rows_, [](const Entry& entry) { return entry.selected; });
    announced_ = Count();
    endResetModel();
    return;
  }
  for (const auto& [first, last] : ranges) {
    beginRemoveRows({}, first, last);
    rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
    announced_ = Count();
    endRemoveRows();
  }
}

void FileList::RemoveSelected() {
  if (selectedCount_ == 0) return;
  Flush();
  int current = currentRow_;
  if (current >= 0) {
    const auto gone = std::count_if(rows_.begin(), rows_.begin() + current,
                                    [](const Entry& entry) { return entry.selected; });
    current -= static_cast<int>(gone);
    current = std::min(current, Count() - selectedCount_ - 1);
  }
  selectedCount_ = 0;
  currentRow_ = current;
  EraseSelected();
  AnnounceCurrentRow();
}

void FileList::Reorder(const std::vector<int>& order) {
  Q_ASSERT(order.size() == rows_.size());
  Flush();
  Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  std::vector<Entry> sorted;
  sorted.reserve(rows_.size());
  std::vector<int> newRow(rows_.size());
  for (const int old : order) {
    newRow[old] = static_cast<int>(sorted.size());
    sorted.push_back(std::move(rows_[old]));
  }
  rows_ = std::move(sorted);
  if (currentRow_ >= 0) currentRow_ = newRow[currentRow_];
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  after.reserve(before.size());
  for (const QModelIndex& was : before) after.append(index(newRow[was.row()], was.column()));
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
  AnnounceCurrentRow();
}

void FileList::ClearFileList() {
  if (rows_.empty()) return;
  beginResetModel();
  rows_.clear();
  announced_ = 0;
  selectedCount_ = 0;
  currentRow_ = -1;
  endResetModel();
  AnnounceCurrentRow();
  Q_EMIT Cleared();
}

QString FileList::ToolTip() const {
  return rows_.empty() ? QString() : QString::number(Count()) + u"個"_s;
}

int FileList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : announced_;
}

int FileList::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : FileListRow::kColumnCount;
}

QVariant FileList::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::ToolTipRole) return CutForDisplay(Reason(index.row()));
  if (role != Qt::DisplayRole) return {};
  return EscapeForDisplay(rows_[index.row()].row[FileListRow::Column(index.column())]);
}

}  // namespace zentorin
