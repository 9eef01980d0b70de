// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <array>

namespace zentorin {

// One row of the file list: seven texts joined by tabs. A row that was read from a shorter text is
// written as that short text again until a further column is set.
class FileListRow {
 public:
  enum Column {
    Mark,     // "o", "x", "-", "?", " " or empty
    Date,     // "yyyy/mm/dd hh:nn:ss", "-" when unknown
    Size,     // kilobytes of 1000 bytes, rounded up, right-aligned in six characters
    Link,     // as written in the page
    BaseDir,  // base directory of the page, no trailing "/"
    Parent,   // address of the page
    Address,  // absolute address
  };
  static constexpr int kColumnCount = 7;
  // Sizes that are not known. The two texts differ on purpose.
  static constexpr const char* kNoFileSize = "     -";
  static constexpr const char* kNoPageSize = "    -";

  static FileListRow FromText(const QString& text);  // missing columns are empty
  QString ToText() const;

  const QString& operator[](Column column) const { return columns_[column]; }
  void Set(Column column, const QString& value);

  bool operator==(const FileListRow&) const = default;

 private:
  std::array<QString, kColumnCount> columns_;
  int written_ = kColumnCount;  // columns that ToText() writes
};

QString FileAddressOf(const FileListRow& row);  // of the link, against the base directory

// A link that names its own scheme is not resolved; no blanks around it.
QString PlayAddressOf(const FileListRow& row);

}  // namespace zentorin
