// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin {

// "[Group]", "Key=Value", "#" comments, UTF-8: desktop entries, mimeapps.list, mimeinfo.cache.
class KeyFile {
 public:
  // Nothing for what is missing, no regular file, over 4 MiB, or binary.
  static std::optional<KeyFile> Read(const QString& path);

  // Blanks around it removed; "" when there is none. Of a key or group twice the first counts.
  QString Raw(const QString& group, const QString& key) const;
  QString Text(const QString& group, const QString& key) const;  // escapes undone
  bool Flag(const QString& group, const QString& key) const;
  QStringList List(const QString& group, const QString& key) const;  // parts between ";"

 private:
  QHash<QString, QHash<QString, QString>> groups_;
};

}  // namespace zentorin
