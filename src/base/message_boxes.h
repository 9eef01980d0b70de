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
    using namespace Qt::Literals::StringLiterals;
    box.title = u"エラー発生"_s;
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

// What both lists ask before they delete.
inline MessageBox DeleteQuestion() {
  using namespace Qt::Literals::StringLiterals;
  return {u"削除確認"_s, u"選択行を削除して宜しいですか？"_s, MessageBox::Buttons::OkCancel,
          MessageBox::Answer::Cancel};
}

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
