// SPDX-License-Identifier: MIT
#include "ui/window_messages.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <memory>

#include <QCoro/QCoroSignal>

#include "app/auto_run.h"
#include "app/program_title.h"
#include "base/file_names.h"

namespace zentorin {
namespace {

QMessageBox::StandardButtons ButtonsOf(MessageBox::Buttons buttons) {
  switch (buttons) {
    case MessageBox::Buttons::Ok:
      return QMessageBox::Ok;
    case MessageBox::Buttons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageBox::Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case MessageBox::Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(MessageBox::Answer answer) {
  switch (answer) {
    case MessageBox::Answer::Ok:
      return QMessageBox::Ok;
    case MessageBox::Answer::Cancel:
      return QMessageBox::Cancel;
    case MessageBox::Answer::Yes:
      return QMessageBox::Yes;
    case MessageBox::Answer::No:
      return QMessageBox::No;
  }
  return QMessageBox::Ok;
}

// What a button means; a box that was closed by other means than a button gives its way out.
MessageBox::Answer AnswerOf(int button, const MessageBox& box) {
  switch (button) {
    case QMessageBox::Ok:
      return MessageBox::Answer::Ok;
    case QMessageBox::Yes:
      return MessageBox::Answer::Yes;
    case QMessageBox::No:
      return MessageBox::Answer::No;
    case QMessageBox::Cancel:
      return MessageBox::Answer::Cancel;
    default:
      return box.defaultAnswer;
  }
}

void SetCaptions(QMessageBox& dialog) {
  const auto name = [&dialog](QMessageBox::StandardButton button, const QString& caption) {
    if (QAbstractButton* shown = dialog.button(button)) shown->setText(caption);
  };
  name(QMessageBox::Ok, QStringLiteral("OK"));
  name(QMessageBox::Cancel, QStringLiteral("キャンセル"));
  name(QMessageBox::Yes, QStringLiteral("はい(&Y)"));
  name(QMessageBox::No, QStringLiteral("いいえ(&N)"));
}

}  // namespace

void WindowMessages::Attach(QWidget* window, const AutoRun* autoRun) {
  window_ = window;
  autoRun_ = autoRun;
}

QCoro::Task<MessageBox::Answer> WindowMessages::Ask(MessageBox box) {
  const QString title = box.title.isEmpty() ? ProductName() : box.title;
  // Not a child of the window: it must outlive the wait for its answer whatever happens there.
  const auto dialog =
      std::make_unique<QMessageBox>(QMessageBox::NoIcon, title, QString(), ButtonsOf(box.buttons));
  dialog->setTextFormat(Qt::PlainText);
  dialog->setText(QString(box.text).remove(QLatin1Char('\r')));
  dialog->setIcon(box.buttons == MessageBox::Buttons::Ok ? QMessageBox::Information
                                                         : QMessageBox::Question);
  dialog->setDefaultButton(ButtonOf(box.defaultAnswer));
  dialog->setWindowModality(Qt::ApplicationModal);
  SetCaptions(*dialog);
  if (window_ != nullptr && window_->isVisible()) {
    dialog->setWindowIcon(window_->windowIcon());
    dialog->winId();
    dialog->move(window_->frameGeometry().center() -
                 QPoint(dialog->sizeHint().width() / 2, dialog->sizeHint().height() / 2));
  }
  if (autoRun_ != nullptr && autoRun_->CurrentPhase() != AutoRun::Phase::Idle) {
    const int answer = ButtonOf(box.defaultAnswer);
    QMessageBox* shown = dialog.get();
    QTimer::singleShot(selfAnswerTime_, shown, [shown, answer] { shown->done(answer); });
  }
  dialog->show();
  const int button = co_await qCoro(dialog.get(), &QDialog::finished);
  co_return AnswerOf(button, box);
}

}  // namespace zentorin
