// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <QCoro/QCoroTask>

namespace zentorin {

struct FileDialog {
  QString title;
  QString folder;        // where the dialog starts, absolute
  QString proposedFile;  // absolute path; empty for none
  QStringList filters;   // "caption(*.ending)", the first one is chosen
};

// Answers are absolute paths of this system, empty when the user gives up.
class FileDialogs {
 public:
  FileDialogs() = default;
  FileDialogs(const FileDialogs&) = delete;
  FileDialogs& operator=(const FileDialogs&) = delete;
  virtual ~FileDialogs() = default;

  virtual QCoro::Task<QString> AskForFileToOpen(FileDialog dialog) = 0;
  // Asks by itself before an existing file is chosen.
  virtual QCoro::Task<QString> AskForFileToSave(FileDialog dialog) = 0;
  virtual QCoro::Task<QString> AskForFolder(FileDialog dialog) = 0;
};

}  // namespace zentorin
