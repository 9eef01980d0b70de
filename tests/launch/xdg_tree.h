// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "launch/xdg_folders.h"
#include "tests/support/temp_dir.h"

namespace zentorin::test {

// A desktop's folders in a temporary place: config/, config-system/, data/, data-system/ and bin/.
class XdgTree {
 public:
  XdgFolders Folders() const;
  QString Path(const QString& name) const { return dir_.Path(name); }
  QString Write(const QString& name, const QByteArray& bytes) const {
    return dir_.Write(name, bytes);
  }
  QByteArray Read(const QString& name) const { return dir_.Read(name); }

  // A shell script in bin/; answers its path.
  QString AddCommand(const QString& name, const QByteArray& script = "exit 0") const;
  // A command and the entry in data-system/ that starts it with `codes`; `lines` are further lines
  // of the entry.
  void AddProgram(const QString& name, const QByteArray& codes = "%f",
                  const QByteArray& lines = {}) const;

 private:
  TempDir dir_;
};

}  // namespace zentorin::test
