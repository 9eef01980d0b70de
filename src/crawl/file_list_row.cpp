// SPDX-License-Identifier: MIT
#include "crawl/file_list_row.h"

#include <QStringTokenizer>
#include <algorithm>

namespace zentorin {

FileListRow FileListRow::FromText(const QString& text) {
  FileListRow row;
  row.written_ = 0;
  for (const QStringView column : qTokenize(text, u'\t')) {
    if (row.written_ == kColumnCount) break;
    row.columns_[row.written_++] = column.toString();
  }
  return row;
}

QString FileListRow::ToText() const {
  QString text = columns_[0];
  for (int column = 1; column < written_; ++column) {
    text += u'\t';
    text += columns_[column];
  }
  return text;
}

void FileListRow::Set(Column column, const QString& value) {
  columns_[column] = value;
  written_ = std::max(written_, column + 1);
}

}  // namespace zentorin
