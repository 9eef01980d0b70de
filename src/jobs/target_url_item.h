// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <array>

namespace zentorin {

// One job of the URL list: 17 texts. Flags are "0" or "1".
class TargetUrlItem {
 public:
  enum Field {
    Number,  // display number: 1-based position, padded with blanks to two characters
    Description,
    Root,         // root URL, may hold date templates
    SubPattern,   // expression of the links to follow
    FilePattern,  // expression of the files to take
    SavePath,
    Date,           // modification-date window in days, empty means all
    Format,         // file-name format with date templates
    Before,         // the two ends of the day window joined by ","
    Opt,            // "0" files by pattern, "1" files by date format
    Skip,           // left out of the batch
    OverWrite,      // existing files are fetched again
    OnlyUnderRoot,  // links that leave the root's folder are not followed
    Modify,         // `ChkModify`
    Depth,
    TreeFolder,  // folders as on the site
    DispModify,  // `ChkDispModify`
  };
  static constexpr int kFieldCount = 17;
  static constexpr std::array kFlags = {Opt,    Skip,       OverWrite, OnlyUnderRoot,
                                        Modify, TreeFolder, DispModify};

  // Takes the first line of a text, split at tabs. The line stays as it is until Set().
  static TargetUrlItem FromLine(const QString& text);
  QString ToLine() const { return fields_.join(u'\t'); }

  // Empty when the line lacks the field.
  QString operator[](Field field) const { return fields_.value(field); }
  // Stores FieldText(value). The line has 17 fields from then on.
  void Set(Field field, const QString& value);
  bool Flag(Field field) const { return (*this)[field] == QChar(u'1'); }
  void SetFlag(Field field, bool on);

  QString BeforeElement(int element) const;
  void SetBeforeElement(int element, const QString& text);

  bool operator==(const TargetUrlItem&) const = default;

 private:
  QStringList fields_ = QStringList(kFieldCount);
};

// Tabs, line breaks and NUL, which part lines and fields, become blanks.
QString FieldText(QString text);

QString DisplayNumber(int row);

}  // namespace zentorin
