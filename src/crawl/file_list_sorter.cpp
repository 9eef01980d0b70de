// SPDX-License-Identifier: MIT
#include "crawl/file_list_sorter.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "base/number_text.h"
#include "crawl/file_list.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// The row's text with one column moved to its front: rows that are alike in that column are sorted
// by the others in their order.
QString SortKey(const FileListRow& row, FileListRow::Column front) {
  QString key = row[front];
  for (int column = 0; column < FileListRow::kColumnCount; ++column) {
    if (column == front) continue;
    key += u'\t';
    key += row[FileListRow::Column(column)];
  }
  return key;
}

}  // namespace

void FileListSorter::Sort(FileList& files, FileListRow::Column column) {
  const bool ascending = WholeNumber(tag_) == 0;
  tag_ = ascending ? u"1"_s : u"0"_s;
  std::vector<QString> keys;
  keys.reserve(static_cast<size_t>(files.Count()));
  for (int row = 0; row < files.Count(); ++row) keys.push_back(SortKey(files.Row(row), column));
  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, [&](int left, int right) {
    return ascending ? keys[left] < keys[right] : keys[right] < keys[left];
  });
  files.Reorder(order);
}

}  // namespace zentorin
