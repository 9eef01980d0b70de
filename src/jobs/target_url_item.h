// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <array>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

// One job of the URL list: 17 texts, held in the list as one line joined by tabs. Flags are
// "0"/"1".
class TargetUrlItem {
 public:
  enum Field {
    Number,         // display number: 1-based position, padded with blanks to two characters
    Description,    // "description"
    Root,           // "root": root URL, may hold date templates
    SubPattern,     // "sub_pattern": expression of the links to follow
    FilePattern,    // "file_pattern": expression of the files to take
    SavePath,       // "save_path"
    Date,           // "date": modification-date window in days, empty means all
    Format,         // "format": file-name format with date templates
    Before,         // "before": the two ends of the day window joined by ","
    Opt,            // "opt": "0" files by pattern, "1" files by date format
    Skip,           // "skip": left out of the batch
    OverWrite,      // "over_write"
    OnlyUnderRoot,  // "only_under_root"
    Modify,         // "disp_modify": `ChkModify`. The key's name is crossed with DispModify's;
                    // existing files rely on it.
    Depth,          // "depth"
    TreeFolder,     // "tree_folder"
    DispModify,     // "disp_date": `ChkDispModify`
  };
  static constexpr int kFieldCount = 17;

  // Splits at tabs; missing fields are empty, further ones are dropped.
  static TargetUrlItem FromLine(const QString& line);
  QString ToLine() const;

  const QString& operator[](Field field) const { return fields_[field]; }
  void Set(Field field, const QString& value) { fields_[field] = value; }
  bool Flag(Field field) const { return fields_[field] == "1"_L1; }
  void SetFlag(Field field, bool on);

  // The two ends of the day window (`cmbBefore` elements 0 and 1).
  QString BeforeElement(int element) const;
  void SetBeforeElement(int element, const QString& text);

  bool operator==(const TargetUrlItem&) const = default;

 private:
  std::array<QString, kFieldCount> fields_;
};

// A text as a field can hold it: tabs, line breaks and NUL, which a job's line and the list's file
// keep for themselves, become blanks.
QString FieldText(QString text);

// " 1", "12": a job's display number for its 0-based row.
QString DisplayNumber(int row);

}  // namespace zentorin
