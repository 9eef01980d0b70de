// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

namespace zentorin::test {

// A folder that lives as long as its object.
class TempDir {
 public:
  QString Path(const QString& name = {}) const {
    return name.isEmpty() ? dir_.path() : dir_.filePath(name);
  }
  // Writes a file, making its folders; answers its path.
  QString Write(const QString& name, const QByteArray& bytes) const {
    const QString path = Path(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    return path;
  }
  // The file's bytes; null when there is no such file.
  QByteArray Read(const QString& name) const {
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

 private:
  QTemporaryDir dir_;
};

}  // namespace zentorin::test
