// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

#include "app/file_dialogs.h"

namespace zentorin {

// The desktop's own file dialogs over the window.
class WindowFileDialogs : public FileDialogs {
 public:
  void Attach(QWidget* window) { window_ = window; }

  QCoro::Task<QString> AskForFileToOpen(FileDialog dialog) override;
  QCoro::Task<QString> AskForFileToSave(FileDialog dialog) override;
  QCoro::Task<QString> AskForFolder(FileDialog dialog) override;

 private:
  QPointer<QWidget> window_;
};

}  // namespace zentorin
