// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QString>
#include <vector>

#include <QCoro/QCoroTask>

#include "launch/text_windows.h"

namespace zentorin {

class FileDialogs;
class MessageBoxes;
class TextWindow;

// The text windows that are open. They stay until the user closes them or the program ends. Both
// references outlive the object, and the object outlives every question for a file.
class PlainTextWindows : public TextWindows {
 public:
  PlainTextWindows(FileDialogs& dialogs, MessageBoxes& messages);
  ~PlainTextWindows() override;

  bool Show(const QString& text, const QString& title) override;

 private:
  QCoro::Task<void> Save(QString text, QString title);

  FileDialogs& dialogs_;
  MessageBoxes& messages_;
  std::vector<QPointer<TextWindow>> windows_;
};

}  // namespace zentorin
