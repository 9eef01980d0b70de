// SPDX-License-Identifier: MIT
#include "tests/support/temp_dir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zentorin::test {

QString TempDir::Path(const QString& name) const {
  return name.isEmpty() ? dir_.path() : dir_.filePath(name);
}

QString TempDir::Write(const QString& name, const QByteArray& bytes) const {
  const QString path = Path(name);
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(bytes);
  return path;
}

QByteArray TempDir::Read(const QString& name) const {
  QFile file(Path(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace zentorin::test
