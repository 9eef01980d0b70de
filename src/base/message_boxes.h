// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

// One message to the user. Line breaks inside `text` are CR LF.
struct MessageBox {
  enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
  enum class Answer { Ok, Cancel, Yes, No };

  // The box that reports an error.
  static MessageBox Error(const QString& text) {
    MessageBox box;
    box.title = QStringLiteral("エラー発生");
    box.text = text;
    box.isError = true;
    return box;
  }

  QString title;
  QString text;
  Buttons buttons = Buttons::Ok;
  Answer defaultAnswer = Answer::Ok;
  bool isError = false;  // a window shows it with a warning sign
};

// The one way by which anything asks or tells the user something. The window shows a dialog; with
// no display the text becomes a line on standard error and the answer is the default one.
class MessageBoxes {
 public:
  MessageBoxes() = default;
  MessageBoxes(const MessageBoxes&) = delete;
  MessageBoxes& operator=(const MessageBoxes&) = delete;
  virtual ~MessageBoxes() = default;

  virtual QCoro::Task<MessageBox::Answer> Ask(MessageBox box) = 0;
};

}  // namespace zentorin
