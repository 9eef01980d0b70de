// SPDX-License-Identifier: MIT
#include "ui/dialogs/frm_input.h"

#include <QFontDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/widgets/fixed_pitch_font.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kColumns = 64;  // half-width characters that the editor shows at first
constexpr int kLines = 4;

template <typename Button>
Button* MakeButton(const char* name, const QString& caption, const QString& toolTip = {}) {
  auto* button = new Button;
  button->setObjectName(QLatin1StringView(name));
  button->setText(caption);
  button->setToolTip(toolTip);
  return button;
}

}  // namespace

frmInput::frmInput(const QString& value, QWidget* parent) : QDialog(parent) {
  setObjectName(u"frmInput"_s);
  setWindowTitle(u"入力"_s);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  MakeControls();
  Connect();
  txtInput->setPlainText(value);
  txtInput->moveCursor(QTextCursor::End);
  const QFontMetrics metrics(txtInput->font());
  resize(kColumns * metrics.horizontalAdvance(u'0'),
         sizeHint().height() - txtInput->sizeHint().height() + (kLines + 1) * metrics.height());
}

void frmInput::MakeControls() {
  auto* rows = new QVBoxLayout(this);
  txtInput = new QPlainTextEdit;
  txtInput->setObjectName(u"txtInput"_s);
  txtInput->setFont(FixedPitchFont(txtInput->font()));
  txtInput->setWordWrapMode(QTextOption::WrapAnywhere);
  txtInput->setTabChangesFocus(true);
  txtInput->setAccessibleName(u"編集する値"_s);
  rows->addWidget(txtInput, 1);
  lblComSw = new QLabel(u"コマンドラインスイッチ"_s);
  lblComSw->setObjectName(u"lblComSw"_s);
  rows->addWidget(lblComSw);
  auto* buttons = new QHBoxLayout;
  rows->addLayout(buttons);
  auto* larger = MakeButton<QToolButton>("UpD_0", u"A▲"_s, u"フォントサイズを大きくします"_s);
  auto* smaller = MakeButton<QToolButton>("UpD_1", u"A▼"_s, u"フォントサイズを小さくします"_s);
  auto* accept = MakeButton<QPushButton>("cmd_0", u"閉じる"_s);
  auto* cancel = MakeButton<QPushButton>("cmd_1", u"キャンセル"_s);
  for (QToolButton* button : {larger, smaller}) {
    button->setAccessibleName(button->toolTip());
    button->setFocusPolicy(Qt::StrongFocus);
    buttons->addWidget(button);
  }
  buttons->addStretch(1);
  buttons->addWidget(accept);
  buttons->addWidget(cancel);
  mnuEdit = new QMenu(u"編集"_s, this);
  mnuEdit->setObjectName(u"mnuEdit"_s);
  QAction* font = mnuEdit->addAction(u"フォント"_s);
  font->setObjectName(u"mnuEditFont"_s);
  connect(font, &QAction::triggered, this, &frmInput::ChooseFont);
  connect(larger, &QToolButton::clicked, this, [this] { SetPoints(Points() + 1); });
  connect(smaller, &QToolButton::clicked, this, [this] { SetPoints(Points() - 1); });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(accept, &QPushButton::clicked, this, &QDialog::accept);
}

void frmInput::Connect() {
  txtInput->installEventFilter(this);
  connect(this, &QDialog::accepted, this, [this] {
    // A pasted text may have brought line breaks.
    Q_EMIT ValueAccepted(txtInput->toPlainText().replace(u'\n', u' '));
  });
}

void frmInput::SetTag(const QString& tag) {
  lblComSw->setVisible(tag.compare("no_commandline"_L1, Qt::CaseInsensitive) != 0);
}

void frmInput::PlaceBelow(const QRect& target) {
  const QScreen* screen = QGuiApplication::screenAt(target.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect room = screen->availableGeometry();
  const int left = std::min(target.left(), room.right() + 1 - width());
  move(std::max(left, room.left()), target.top() + target.height());
}

bool frmInput::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) return true;
  }
  return QDialog::eventFilter(watched, event);
}

void frmInput::mousePressEvent(QMouseEvent* event) {
  QDialog::mousePressEvent(event);
  if (event->button() == Qt::RightButton) mnuEdit->popup(event->globalPosition().toPoint());
}

int frmInput::Points() const {
  return QFontInfo(txtInput->font()).pointSize();
}

void frmInput::SetPoints(int points) {
  QFont font = txtInput->font();
  font.setPointSize(std::clamp(points, kMinPoints, kMaxPoints));
  txtInput->setFont(font);
}

// The dialog gives a whole font; only its size is taken.
void frmInput::ChooseFont() {
  auto* dialog = new QFontDialog(txtInput->font(), this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
  connect(dialog, &QFontDialog::fontSelected, this,
          [this](const QFont& font) { SetPoints(QFontInfo(font).pointSize()); });
  dialog->open();
}

}  // namespace zentorin
