// SPDX-License-Identifier: MIT
#include "ui/status_binding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <initializer_list>

#include "base/number_text.h"
#include "base/status_board.h"
#include "ui/job_binding.h"
#include "ui/main_controls.h"
#include "ui/main_layout.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"
#include "ui/widgets/readable_colour.h"

namespace zentorin {
namespace {

QColor FromBgr(quint32 bgr) {
  constexpr quint32 kByte = 0xFF;
  return {static_cast<int>(bgr & kByte), static_cast<int>((bgr >> 8) & kByte),
          static_cast<int>((bgr >> 16) & kByte)};
}

// Sets a caption; true when it was another one.
template <typename Control>
bool SetCaption(Control* control, const QString& caption) {
  if (control->text() == caption) return false;
  control->setText(caption);
  return true;
}

}  // namespace

StatusBinding::StatusBinding(StatusBoard& board, MainControls& controls, MainLayout& layout,
                             JobBinding& job, QObject* parent)
    : QObject(parent), board_(board), c_(controls), layout_(layout), job_(job) {
  connect(&board, &StatusBoard::Changed, this, &StatusBinding::Show);
  connect(&board, &StatusBoard::ProgressChanged, this, &StatusBinding::ShowProgress);
  connect(c_.ChkStandby, &QCheckBox::clicked, this, [this](bool checked) {
    StatusBoard::Standby standby = board_.GetStandby();
    standby.checked = checked;
    board_.SetStandby(standby);
  });
  // A palette that is changed while the program runs changes the status line's colour too.
  c_.frStatus->installEventFilter(this);
  ShowStatusColour();
  Show();
}

bool StatusBinding::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) ShowStatusColour();
  return QObject::eventFilter(watched, event);
}

void StatusBinding::Show() {
  ShowStatusLine();
  SetShown(c_.cmdCancel, board_.CancelShown());
  c_.cmdCancel->setEnabled(board_.CancelEnabled());
  c_.cmdCancel->setText(board_.CancelCaption());
  SetShown(c_.frProgress_o, board_.ProgressShown());
  ShowBusy();
  ShowStandby();
  ShowProgress();
}

void StatusBinding::ShowStatusLine() {
  if (SetCaption(c_.lblStatus, board_.Status())) layout_.PlaceStatus();
  if (board_.StatusColour() != shownColour_) ShowStatusColour();
}

void StatusBinding::ShowStatusColour() {
  shownColour_ = board_.StatusColour();
  QPalette palette;
  if (shownColour_ != StatusBoard::kBlack) {
    const QColor colour = ReadableColour(FromBgr(shownColour_), c_.frStatus->palette());
    palette.setColor(QPalette::WindowText, colour);
  }
  c_.lblStatus->setPalette(palette);
}

void StatusBinding::ShowProgress() {
  if (SetCaption(c_.lblFile, board_.File())) layout_.PlaceStatus();
  c_.lblUrl_All_Cnt->setText(board_.FileCount());
  if (SetCaption(c_.lblProgress_o, board_.Counter())) layout_.PlaceProgressFrame();
  // The bar has two writers: the run's own progress, and the fraction of the file in hand whenever
  // its text changes. The later one counts.
  if (SetCaption(c_.lblDone, board_.Done())) layout_.SetFraction(NumericValue(board_.Done()));
  if (board_.Progress() != shownProgress_) {
    shownProgress_ = board_.Progress();
    layout_.SetFraction(shownProgress_);
  }
}

void StatusBinding::SetShown(QWidget* control, bool shown) {
  if (control->isHidden() != shown) return;
  control->setVisible(shown);
  Q_EMIT LayoutNeeded();
}

// Asked of the window, not of the program: a message box that comes and goes does not count.
QWidget* StatusBinding::Focused() const {
  return c_.central->window()->focusWidget();
}

void StatusBinding::Focus(QWidget* control) {
  if (control->isEnabled()) {
    control->setFocus();
    return;
  }
  focusBefore_ = control;
  focusDuring_ = Focused();
}

void StatusBinding::ShowBusy() {
  const bool begins = board_.Busy() && !shownBusy_;
  const bool ends = !board_.Busy() && shownBusy_;
  shownBusy_ = board_.Busy();
  if (begins) focusBefore_ = Focused();
  c_.frSite->setEnabled(!board_.Busy() && board_.SiteEnabled());
  if (begins || ends) Lock(ends);
  // A control that is disabled loses the focus. It gets it back unless the user has taken it
  // elsewhere meanwhile.
  if (begins) {
    focusDuring_ = Focused();
  } else if (ends && focusBefore_ != nullptr && Focused() == focusDuring_) {
    focusBefore_->setFocus();
  }
}

void StatusBinding::Lock(bool enabled) {
  c_.mnuFile->menuAction()->setEnabled(enabled);
  for (QAction* action : c_.mnuFile->actions()) action->setEnabled(enabled);
  c_.mnuTool->menuAction()->setEnabled(enabled);
  for (QAction* action : c_.mnuTool->actions()) action->setEnabled(enabled);
  const std::initializer_list<QWidget*> locked = {c_.frTop,
                                                  c_.cmdOrder_0,
                                                  c_.cmdOrder_1,
                                                  c_.txtDescription,
                                                  c_.Label5,
                                                  c_.Opt_0,
                                                  c_.Opt_1,
                                                  c_.ChkSkip,
                                                  c_.ChkOverWrite,
                                                  c_.lblSavePath,
                                                  c_.cmdSavePath,
                                                  c_.ChkModify,
                                                  c_.ChkDispModify,
                                                  c_.cmbDate,
                                                  c_.txtSavePath,
                                                  c_.Label1,
                                                  c_.Label2,
                                                  c_.Label3,
                                                  c_.Label9,
                                                  c_.Label10,
                                                  c_.txtUrl_Root,
                                                  c_.cmbUrl_SubPattern,
                                                  c_.lblDepth,
                                                  c_.cmbDepth,
                                                  c_.cmbFilePattern,
                                                  c_.lblDateEnable,
                                                  c_.lblArrow_0,
                                                  c_.lblArrow_1,
                                                  c_.lblReg,
                                                  c_.lblBefore_0,
                                                  c_.lblBefore_1,
                                                  c_.cmbBefore_0,
                                                  c_.cmbBefore_1,
                                                  c_.cmdGo_All_0,
                                                  c_.cmdGo_All_1,
                                                  c_.cmdAllDownload_0,
                                                  c_.cmdAllDownload_1,
                                                  c_.lblRegHelp,
                                                  c_.Label12,
                                                  c_.txtFileFormat,
                                                  c_.lblFormat};
  for (QWidget* widget : locked) widget->setEnabled(enabled);
  job_.SetEditable(enabled);
}

void StatusBinding::ShowStandby() {
  const StatusBoard::Standby& standby = board_.GetStandby();
  SetShown(c_.ChkStandby, standby.visible);
  c_.ChkStandby->setChecked(standby.checked);
  if (!standby.toolTip.isEmpty()) c_.ChkStandby->setToolTip(standby.toolTip);
  if (!standby.caption.isEmpty() && SetCaption(c_.ChkStandby, standby.caption)) {
    Q_EMIT LayoutNeeded();
  }
}

}  // namespace zentorin
