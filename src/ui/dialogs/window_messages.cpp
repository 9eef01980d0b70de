// SPDX-License-Identifier: MIT
#include "ui/dialogs/window_messages.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>
#include <memory>

#include <QCoro/QCoroSignal>

#include "app/auto_run.h"
#include "base/file_names.h"
#include "base/product_name.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

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

// What a button means; a box whose window was closed takes the answer that does nothing.
MessageBox::Answer AnswerOf(int button, MessageBox::Buttons buttons) {
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
      break;
  }
  switch (buttons) {
    case MessageBox::Buttons::Ok:
      return MessageBox::Answer::Ok;
    case MessageBox::Buttons::YesNo:
      return MessageBox::Answer::No;
    default:
      return MessageBox::Answer::Cancel;
  }
}

QMessageBox::Icon IconOf(const MessageBox& box) {
  if (box.buttons != MessageBox::Buttons::Ok) return QMessageBox::Question;
  return box.isError ? QMessageBox::Warning : QMessageBox::Information;
}

// A box in the middle of a window, as far as the screen allows. Not a child of that window: it must
// outlive the wait for its answer whatever happens there.
class CentredBox : public QMessageBox {
 public:
  explicit CentredBox(QWidget* over) : over_(over) {
    if (over == nullptr) return;
    setWindowIcon(over->windowIcon());
    winId();
    windowHandle()->setTransientParent(over->windowHandle());
  }

 protected:
  void showEvent(QShowEvent* event) override {
    QMessageBox::showEvent(event);
    // Only now has the text been wrapped and the size is the final one.
    if (over_ != nullptr) adjustPosition(over_);
  }

 private:
  QPointer<QWidget> over_;
};

void SetCaptions(QMessageBox& dialog) {
  const auto name = [&dialog](QMessageBox::StandardButton button, const QString& caption) {
    if (QAbstractButton* shown = dialog.button(button)) shown->setText(caption);
  };
  name(QMessageBox::Ok, u"OK"_s);
  name(QMessageBox::Cancel, u"キャンセル"_s);
  name(QMessageBox::Yes, u"はい(&Y)"_s);
  name(QMessageBox::No, u"いいえ(&N)"_s);
}

}  // namespace

void WindowMessages::Attach(QWidget* window, const AutoRun* autoRun) {
  window_ = window;
  autoRun_ = autoRun;
}

QCoro::Task<MessageBox::Answer> WindowMessages::Ask(MessageBox box) {
  const QString title = box.title.isEmpty() ? ProductName() : box.title;
  const bool overWindow = window_ != nullptr && window_->isVisible();
  const auto dialog = std::make_unique<CentredBox>(overWindow ? window_.data() : nullptr);
  dialog->setWindowTitle(title);
  dialog->setStandardButtons(ButtonsOf(box.buttons));
  dialog->setTextFormat(Qt::PlainText);
  dialog->setText(QString(box.text).remove(u'\r'));
  dialog->setIcon(IconOf(box));
  dialog->setDefaultButton(ButtonOf(box.defaultAnswer));
  dialog->setWindowModality(Qt::ApplicationModal);
  SetCaptions(*dialog);
  if (autoRun_ != nullptr && autoRun_->CurrentState() != AutoRun::State::Idle) {
    const int answer = ButtonOf(box.defaultAnswer);
    QMessageBox* shown = dialog.get();
    QTimer::singleShot(selfAnswerTime_, shown, [shown, answer] { shown->done(answer); });
  }
  dialog->show();
  const int button = co_await qCoro(dialog.get(), &QDialog::finished);
  co_return AnswerOf(button, box.buttons);
}

}  // namespace zentorin
