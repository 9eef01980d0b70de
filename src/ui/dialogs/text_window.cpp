// SPDX-License-Identifier: MIT
#include "ui/dialogs/text_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStringTokenizer>
#include <QVBoxLayout>

#include "ui/widgets/fixed_pitch_font.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kColumns = 88;  // half-width characters that the window shows at first
constexpr int kLines = 32;

QPushButton* AddButton(QHBoxLayout* row, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QLatin1StringView(name));
  button->setAutoDefault(false);
  row->addWidget(button);
  return button;
}

// Lines that take for ever to lay out (a page can be one line of megabytes) are shown in pieces.
QString WithoutEndlessLines(const QString& text) {
  constexpr qsizetype kLongestLine = 8000;
  QString shown;
  shown.reserve(text.size());
  bool first = true;
  for (const QStringView line : qTokenize(text, u'\n')) {
    if (!first) shown += u'\n';
    first = false;
    for (qsizetype from = 0; from == 0 || from < line.size(); from += kLongestLine) {
      if (from > 0) shown += u'\n';
      shown += line.mid(from, kLongestLine);
    }
  }
  return shown;
}

}  // namespace

TextWindow::TextWindow(const QString& text, const QString& title, QWidget* parent)
    : QWidget(parent, Qt::Window), text_(text) {
  setObjectName(u"TextWindow"_s);
  setWindowTitle(title.isEmpty() ? u"テキスト"_s : title);
  setWindowIcon(QIcon(u":/icons/zentorin.svg"_s));
  MakeControls();
  MakeShortcuts();
  txtText->setPlainText(WithoutEndlessLines(text));
  const QFontMetrics metrics(txtText->font());
  resize(kColumns * metrics.horizontalAdvance(u'0'), kLines * metrics.lineSpacing());
}

void TextWindow::MakeControls() {
  auto* rows = new QVBoxLayout(this);
  auto* bar = new QHBoxLayout;
  rows->addLayout(bar);
  txtFind = new QLineEdit;
  txtFind->setObjectName(u"txtFind"_s);
  txtFind->setPlaceholderText(u"検索する文字列"_s);
  txtFind->setAccessibleName(txtFind->placeholderText());
  txtFind->setClearButtonEnabled(true);
  bar->addWidget(txtFind, 1);
  auto* next = AddButton(bar, "cmdFindNext", u"次を検索"_s);
  auto* previous = AddButton(bar, "cmdFindPrevious", u"前を検索"_s);
  auto* copy = AddButton(bar, "cmdCopy", u"コピー"_s);
  auto* save = AddButton(bar, "cmdSaveAs", u"名前を付けて保存"_s);
  copy->setToolTip(u"選択した部分、選択がなければ全体をコピーします"_s);
  txtText = new QPlainTextEdit;
  txtText->setObjectName(u"txtText"_s);
  txtText->setReadOnly(true);
  txtText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  txtText->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtText->setFont(FixedPitchFont(txtText->font()));
  txtText->setAccessibleName(windowTitle());
  rows->addWidget(txtText, 1);
  lblFound = new QLabel;
  lblFound->setObjectName(u"lblFound"_s);
  lblFound->setTextFormat(Qt::PlainText);
  rows->addWidget(lblFound);
  lblFound->hide();
  QWidget* previousInOrder = txtText;
  for (QWidget* widget : std::initializer_list<QWidget*>{txtFind, next, previous, copy, save}) {
    setTabOrder(previousInOrder, widget);
    previousInOrder = widget;
  }
  txtText->setFocus();
  connect(next, &QPushButton::clicked, this, [this] { Find(false); });
  connect(previous, &QPushButton::clicked, this, [this] { Find(true); });
  connect(txtFind, &QLineEdit::returnPressed, this, [this] { Find(false); });
  connect(copy, &QPushButton::clicked, this, [this] {
    if (txtText->textCursor().hasSelection()) {
      txtText->copy();
    } else {
      QGuiApplication::clipboard()->setText(text_);
    }
  });
  connect(save, &QPushButton::clicked, this, [this] { Q_EMIT SaveRequested(text_); });
}

void TextWindow::MakeShortcuts() {
  const auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, this, [this] {
    txtFind->setFocus();
    txtFind->selectAll();
  });
  const auto* next = new QShortcut(QKeySequence::FindNext, this);
  connect(next, &QShortcut::activated, this, [this] { Find(false); });
  const auto* previous = new QShortcut(QKeySequence::FindPrevious, this);
  connect(previous, &QShortcut::activated, this, [this] { Find(true); });
  const auto* save = new QShortcut(QKeySequence::Save, this);
  connect(save, &QShortcut::activated, this, [this] { Q_EMIT SaveRequested(text_); });
  for (const QKeySequence& keys :
       {QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)}) {
    const auto* close = new QShortcut(keys, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);
  }
}

// From the cursor on, then once more from the other end of the text.
void TextWindow::Find(bool backward) {
  const QString wanted = txtFind->text();
  if (wanted.isEmpty()) return;
  const QTextDocument::FindFlags flags =
      backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  bool found = txtText->find(wanted, flags);
  if (!found) {
    const QTextCursor before = txtText->textCursor();
    txtText->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    found = txtText->find(wanted, flags);
    if (!found) txtText->setTextCursor(before);
  }
  lblFound->setText(u"「%1」は見つかりません。"_s.arg(wanted));
  lblFound->setVisible(!found);
}

}  // namespace zentorin
