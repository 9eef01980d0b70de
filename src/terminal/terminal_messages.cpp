// SPDX-License-Identifier: MIT
#include "terminal/terminal_messages.h"

#include <QRegularExpression>

#include "terminal/terminal.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString AnswerText(MessageBox::Answer answer) {
  switch (answer) {
    case MessageBox::Answer::Ok:
      return u"OK"_s;
    case MessageBox::Answer::Cancel:
      return u"キャンセル"_s;
    case MessageBox::Answer::Yes:
      return u"はい"_s;
    case MessageBox::Answer::No:
      break;
  }
  return u"いいえ"_s;
}

}  // namespace

QCoro::Task<MessageBox::Answer> TerminalMessages::Ask(MessageBox box) {
  static const QRegularExpression kLineBreaks(u"[\\r\\n]+"_s);
  QString line = box.text;
  line.replace(kLineBreaks, u" / "_s);
  if (!box.title.isEmpty()) line.prepend(box.title + u": "_s);
  if (box.buttons != MessageBox::Buttons::Ok) {
    line += u" → "_s + AnswerText(box.defaultAnswer);
  }
  terminal_.Line(line);
  co_return box.defaultAnswer;
}

}  // namespace zentorin
