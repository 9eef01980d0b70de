// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

// A file of the desktop's key and value form ("[Group]", "Key=Value", "#" comments, UTF-8):
// desktop entries, mimeapps.list and mimeinfo.cache.
class KeyFile {
 public:
  // Nothing for a file that is missing, no regular file, over 4 MiB, or binary (holds a NUL).
  static std::optional<KeyFile> Read(const QString& path);

  // The value as it stands in the file, blanks around it removed; empty when there is none. Of a
  // key or group that is there twice the first counts.
  QString Raw(const QString& group, const QString& key) const;
  // The value with its escapes (\s \n \t \r \\) undone.
  QString Text(const QString& group, const QString& key) const;
  bool Flag(const QString& group, const QString& key) const;
  // The parts of a value that are separated by ";".
  QStringList List(const QString& group, const QString& key) const;

 private:
  QHash<QString, QHash<QString, QString>> groups_;
};

}  // namespace zentorin
