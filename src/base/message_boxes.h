// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <QCoro/QCoroTask>

namespace zentorin {

struct MessageBox {
  enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
  enum class Answer { Ok, Cancel, Yes, No };

  static MessageBox Error(const QString& text) {
    MessageBox box;
    using namespace Qt::Literals::StringLiterals;
    box.title = u"エラー発生"_s;
    box.text = text;
    box.isError = true;
    return box;
  }

  QString title;
  QString text;  // line breaks are CR LF
  Buttons buttons = Buttons::Ok;
  Answer defaultAnswer = Answer::Ok;
  bool isError = false;  // a window shows it with a warning sign
};

inline MessageBox DeleteQuestion() {
  using namespace Qt::Literals::StringLiterals;
  return {u"削除確認"_s, u"選択行を削除して宜しいですか？"_s, MessageBox::Buttons::OkCancel,
          MessageBox::Answer::Cancel};
}

// With no display a box is a line on standard error, and its answer the default one.
class MessageBoxes {
 public:
  MessageBoxes() = default;
  MessageBoxes(const MessageBoxes&) = delete;
  MessageBoxes& operator=(const MessageBoxes&) = delete;
  virtual ~MessageBoxes() = default;

  virtual QCoro::Task<MessageBox::Answer> Ask(MessageBox box) = 0;
};

}  // namespace zentorin
