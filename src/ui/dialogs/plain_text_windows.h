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

// They stay until the user closes them or the program ends, and all questions with them.
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
