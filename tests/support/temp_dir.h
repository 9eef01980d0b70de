// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace zentorin::test {

// A folder that lives as long as its object.
class TempDir {
 public:
  QString Path(const QString& name = {}) const;
  // Writes a file, making its folders; answers its path.
  QString Write(const QString& name, const QByteArray& bytes) const;
  // The file's bytes; null when there is no such file.
  QByteArray Read(const QString& name) const;

 private:
  QTemporaryDir dir_;
};

}  // namespace zentorin::test
