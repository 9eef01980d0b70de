// SPDX-License-Identifier: MIT
#include "ui/dialogs/frm_search.h"

#include "ui_frm_search.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

frmSearch::frmSearch(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmSearch>()) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowStaysOnTopHint);
  Timer_Start.setObjectName(u"Timer_Start"_s);
  Timer_Start.setSingleShot(true);
  Timer_Start.setInterval(0);
  connect(&Timer_Start, &QTimer::timeout, this, [this] {
    ui_->txtStrSearch->setFocus();
    ui_->txtStrSearch->selectAll();
  });
  connect(ui_->txtStrSearch, &QLineEdit::textChanged, this, &frmSearch::EnableCommands);
  connect(ui_->txtStrSearch, &QLineEdit::returnPressed, ui_->cmdSearch_0, &QPushButton::click);
  connect(ui_->cmdSearch_0, &QPushButton::clicked, this,
          [this] { Q_EMIT FindNextRequested(ui_->txtStrSearch->text()); });
  connect(ui_->cmdSearch_1, &QPushButton::clicked, this,
          [this] { Q_EMIT FindAllRequested(ui_->txtStrSearch->text()); });
  EnableCommands({});
}

frmSearch::~frmSearch() = default;

void frmSearch::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  Timer_Start.start();
}

void frmSearch::EnableCommands(const QString& text) {
  for (QWidget* control :
       std::initializer_list<QWidget*>{ui_->cmdSearch_0, ui_->cmdSearch_1, ui_->chkCompare}) {
    control->setEnabled(!text.isEmpty());
  }
}

}  // namespace zentorin
