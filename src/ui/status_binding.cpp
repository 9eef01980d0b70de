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
#include <QTextDocument>
#include <QToolButton>
#include <initializer_list>

#include "base/number_text.h"
#include "crawl/file_list.h"
#include "ui/job_binding.h"
#include "ui/main_controls.h"
#include "ui/main_layout.h"
#include "ui/widgets/line_list_view.h"
#include "ui/widgets/link_label.h"
#include "ui/widgets/readable_colour.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;
namespace {

// Sets a caption; true when it was another one.
template <typename Control>
bool SetCaption(Control* control, const QString& caption) {
  if (control->text() == caption) return false;
  control->setText(caption);
  return true;
}

// The text of the hidden label of the file in hand. The smaller of 0 and the share done reads 0
// from a file's first block on, which is this program's rule; a stream's share is shown as it is.
QString DoneText(const ActivityState& now) {
  if (now.recorded) return QString::number(*now.recorded, 'f', 2);
  return now.bytes > 0 && now.length > 0 ? u"0.000"_s : u"0"_s;
}

}  // namespace

StatusBinding::StatusBinding(Activity& activity, const FileList& files, MainControls& controls,
                             MainLayout& layout, JobBinding& job, QObject* parent)
    : QObject(parent),
      activity_(activity),
      files_(files),
      c_(controls),
      layout_(layout),
      job_(job) {
  connect(&activity, &Activity::Changed, this, &StatusBinding::Show);
  connect(&files, &FileList::Cleared, this, &StatusBinding::ShowRowCount);
  connect(&files, &FileList::rowsInserted, this, &StatusBinding::ShowRowCount);
  connect(&files, &FileList::rowsRemoved, this, &StatusBinding::ShowRowCount);
  connect(&files, &FileList::modelReset, this, &StatusBinding::ShowRowCount);
  connect(c_.ChkStandby, &QCheckBox::clicked, this, [this](bool checked) {
    AfterBatch choice = activity_.Now().afterBatch;
    choice.chosen = checked;
    activity_.SetAfterBatch(choice);
  });
  // A palette that is changed while the program runs changes the status line's colour too.
  c_.frStatus->installEventFilter(this);
  ShowMessageColour();
  Show();
}

bool StatusBinding::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) ShowMessageColour();
  return QObject::eventFilter(watched, event);
}

void StatusBinding::Show() {
  const ActivityState& now = activity_.Now();
  ShowMessage();
  const bool cancellable = now.phase != Phase::Resting;
  SetShown(c_.cmdCancel, cancellable);
  c_.cmdCancel->setEnabled(cancellable);
  c_.cmdCancel->setText(now.cancelling ? u"キャンセル処理中"_s : u"キャンセル"_s);
  SetShown(c_.frProgress_o, now.Works());
  ShowBusy();
  ShowAfterBatch();
  ShowProgress();
  ShowRowCount();
}

void StatusBinding::ShowMessage() {
  const Message& message = activity_.Now().message;
  const QString& waiting = activity_.Now().waiting;
  if (SetCaption(c_.lblStatus, waiting.isEmpty() ? message.text : waiting)) {
    layout_.PlaceStatus();
    ShowDetails();
  }
  if (message.tone != shownTone_) ShowMessageColour();
}

void StatusBinding::SetDetails(const QString& details) {
  details_ = details;
  ShowDetails();
}

// A fault without further words is repeated whole: the line may be too short for it.
void StatusBinding::ShowDetails() {
  const Message& message = activity_.Now().message;
  QString text = details_;
  if (text.isEmpty() && message.tone == Tone::Fault) text = message.text;
  c_.lblStatus->setToolTip(text.isEmpty() ? text
                                          : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
}

void StatusBinding::ShowMessageColour() {
  shownTone_ = activity_.Now().message.tone;
  QPalette palette;
  if (shownTone_ != Tone::Note) {
    const QColor colour = shownTone_ == Tone::Good ? Qt::blue : Qt::red;
    palette.setColor(QPalette::WindowText, ReadableColour(colour, c_.frStatus->palette()));
  }
  c_.lblStatus->setPalette(palette);
}

void StatusBinding::ShowProgress() {
  const ActivityState& now = activity_.Now();
  const QString file = now.phase == Phase::CountingDown ? SecondsText(now.left) : now.address;
  if (SetCaption(c_.lblFile, file)) layout_.PlaceStatus();
  const QString counter =
      now.row.count > 0 ? u"%1/%2"_s.arg(now.row.number).arg(now.row.count) : QString();
  if (SetCaption(c_.lblProgress_o, counter)) layout_.PlaceProgressFrame();
  SetCaption(c_.lblDone, DoneText(now));
  layout_.SetFraction(now.recorded.value_or(now.share));
}

// Nothing while a file list is downloaded alone; a crawl counts what it finds.
void StatusBinding::ShowRowCount() {
  const ActivityState& now = activity_.Now();
  const bool alone = now.phase >= Phase::Downloading && !now.batch;
  int count = files_.Count();
  if (alone) count = 0;
  if (now.phase == Phase::Listing) count = now.found;
  SetCaption(c_.lblUrl_All_Cnt, count == 0 ? QString() : QString::number(count));
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

void StatusBinding::ShowBusy() {
  const bool busy = activity_.Now().Works();
  if (busy == shownBusy_) return;
  shownBusy_ = busy;
  if (busy) focusBefore_ = Focused();
  c_.frSite->setEnabled(!busy);
  Lock(!busy);
  // A control that is disabled loses the focus. It gets it back unless the user has taken it
  // elsewhere meanwhile.
  if (busy) {
    focusDuring_ = Focused();
  } else if (focusBefore_ != nullptr && Focused() == focusDuring_) {
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

void StatusBinding::ShowAfterBatch() {
  const AfterBatch& choice = activity_.Now().afterBatch;
  SetShown(c_.ChkStandby, choice.offered);
  c_.ChkStandby->setChecked(choice.chosen);
  if (choice.action.isEmpty()) return;
  c_.ChkStandby->setToolTip(u"一括ダウンロード終了後にＰＣを「"_s + choice.action +
                            u"」状態にします。"_s);
  if (SetCaption(c_.ChkStandby, choice.action)) Q_EMIT LayoutNeeded();
}

}  // namespace zentorin
