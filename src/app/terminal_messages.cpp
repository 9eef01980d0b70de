// SPDX-License-Identifier: MIT
#include "app/terminal_messages.h"

#include <QRegularExpression>

#include "app/terminal.h"

namespace zentorin {
namespace {

QString AnswerText(MessageBox::Answer answer) {
  switch (answer) {
    case MessageBox::Answer::Ok:
      return QStringLiteral("OK");
    case MessageBox::Answer::Cancel:
      return QStringLiteral("キャンセル");
    case MessageBox::Answer::Yes:
      return QStringLiteral("はい");
    case MessageBox::Answer::No:
      break;
  }
  return QStringLiteral("いいえ");
}

}  // namespace

QCoro::Task<MessageBox::Answer> TerminalMessages::Ask(MessageBox box) {
  static const QRegularExpression kLineBreaks(QStringLiteral("[\\r\\n]+"));
  QString line = box.text;
  line.replace(kLineBreaks, QStringLiteral(" / "));
  if (!box.title.isEmpty()) line.prepend(box.title + QStringLiteral(": "));
  if (box.buttons != MessageBox::Buttons::Ok) {
    line += QStringLiteral(" → ") + AnswerText(box.defaultAnswer);
  }
  terminal_.Line(line);
  co_return box.defaultAnswer;
}

}  // namespace zentorin
