// SPDX-License-Identifier: MIT
#include "ui/status_binding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "base/number_text.h"
#include "base/status_board.h"
#include "ui/job_binding.h"
#include "ui/line_list_view.h"
#include "ui/link_label.h"
#include "ui/main_controls.h"
#include "ui/main_layout.h"

namespace zentorin {
namespace {

// The status line's colour as a colour that can be read on the window's background: the pure blue
// and red of the board on a light one, lighter shades of them on a dark one.
QColor ReadableColour(quint32 bgr, const QPalette& palette) {
  if (bgr == StatusBoard::kBlack) return palette.color(QPalette::WindowText);
  const QColor colour(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                      static_cast<int>((bgr >> 16) & 0xFF));
  constexpr int kHalfLight = 128;
  constexpr int kLighterPercent = 160;
  const bool dark = palette.color(QPalette::Window).lightness() < kHalfLight;
  if (!dark) return colour;
  return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(),
                         std::min(255, colour.lightness() * kLighterPercent / 100));
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
  Show();
  ShowProgress();
}

void StatusBinding::Show() {
  c_.lblStatus->setText(board_.Status());
  QPalette palette = c_.frStatus->palette();
  palette.setColor(QPalette::WindowText, ReadableColour(board_.StatusColour(), palette));
  c_.lblStatus->setPalette(palette);
  c_.cmdCancel->setVisible(board_.CancelShown());
  c_.cmdCancel->setEnabled(board_.CancelEnabled());
  c_.cmdCancel->setText(board_.CancelCaption());
  c_.frProgress_o->setVisible(board_.ProgressShown());
  ShowBusy();
  ShowStandby();
  ShowProgress();
  Q_EMIT LayoutNeeded();
}

void StatusBinding::ShowProgress() {
  c_.lblFile->setText(board_.File());
  c_.lblUrl_All_Cnt->setText(board_.FileCount());
  c_.lblProgress_o->setText(board_.Counter());
  // The bar has two writers: the run's own progress, and the fraction of the file in hand whenever
  // its text changes. The later one counts.
  if (board_.Done() != c_.lblDone->text()) {
    c_.lblDone->setText(board_.Done());
    layout_.SetFraction(NumericValue(board_.Done()));
  }
  if (board_.Progress() != shownProgress_) {
    shownProgress_ = board_.Progress();
    layout_.SetFraction(shownProgress_);
  }
}

void StatusBinding::ShowBusy() {
  const bool enabled = !board_.Busy();
  c_.mnuFile->menuAction()->setEnabled(enabled);
  for (QAction* action : c_.mnuFile->actions()) action->setEnabled(enabled);
  c_.mnuTool->menuAction()->setEnabled(enabled);
  for (QAction* action : c_.mnuTool->actions()) action->setEnabled(enabled);
  QWidget* const locked[] = {c_.frTop,
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
  c_.frSite->setEnabled(enabled && board_.SiteEnabled());
  job_.SetEditable(enabled);
}

void StatusBinding::ShowStandby() {
  const StatusBoard::Standby& standby = board_.GetStandby();
  c_.ChkStandby->setVisible(standby.visible);
  c_.ChkStandby->setChecked(standby.checked);
  if (!standby.caption.isEmpty()) c_.ChkStandby->setText(standby.caption);
  if (!standby.toolTip.isEmpty()) c_.ChkStandby->setToolTip(standby.toolTip);
}

}  // namespace zentorin
