// SPDX-License-Identifier: MIT
#include "crawl/file_list_row.h"

#include <QStringTokenizer>
#include <algorithm>

#include "net/api_web.h"
#include "net/character_references.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

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

QString FileAddressOf(const FileListRow& row) {
  return API_Web::AddressOf(row[FileListRow::BaseDir], row[FileListRow::Link]);
}

QString PlayAddressOf(const FileListRow& row) {
  const QString link = DecodeReferences(row[FileListRow::Link]);
  for (const QLatin1StringView scheme : {"mms://"_L1, "http://"_L1, "https://"_L1}) {
    if (link.startsWith(scheme)) return link.trimmed();
  }
  return FileAddressOf(row).trimmed();
}

}  // namespace zentorin
