// SPDX-License-Identifier: MIT
#include "ui/job_binding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTextDocument>

#include "base/display_clock.h"
#include "jobs/date_template.h"
#include "jobs/job_editor.h"
#include "ui/main_controls.h"

namespace zentorin {
namespace {

// Sets a text and leaves the cursor of an edit in progress alone when it is the same.
void ShowText(QLineEdit* edit, const QString& text) {
  if (edit->text() == text) return;
  const QSignalBlocker blocker(edit);
  edit->setText(text);
  if (!edit->hasFocus()) edit->setCursorPosition(0);
}

}  // namespace

JobBinding::JobBinding(JobEditor& job, const DisplayClock& clock, MainControls& controls,
                       QObject* parent)
    : QObject(parent), job_(job), clock_(clock), c_(controls) {
  BindText(c_.txtDescription, TargetUrlItem::Description);
  BindText(c_.txtUrl_Root, TargetUrlItem::Root);
  BindText(c_.txtSavePath, TargetUrlItem::SavePath);
  BindText(c_.txtFileFormat, TargetUrlItem::Format);
  BindText(c_.cmbUrl_SubPattern->lineEdit(), TargetUrlItem::SubPattern);
  BindText(c_.cmbFilePattern->lineEdit(), TargetUrlItem::FilePattern);
  BindCombo(c_.cmbDate, TargetUrlItem::Date);
  BindCombo(c_.cmbDepth, TargetUrlItem::Depth);
  BindBefore(c_.cmbBefore_0, 0);
  BindBefore(c_.cmbBefore_1, 1);
  BindFlag(c_.ChkSkip, TargetUrlItem::Skip);
  BindFlag(c_.ChkOverWrite, TargetUrlItem::OverWrite);
  BindFlag(c_.ChkOnlyInSite, TargetUrlItem::OnlyUnderRoot);
  BindFlag(c_.ChkModify, TargetUrlItem::Modify);
  BindFlag(c_.ChkTreeFolder, TargetUrlItem::TreeFolder);
  BindFlag(c_.ChkDispModify, TargetUrlItem::DispModify);
  connect(c_.Opt_0, &QRadioButton::clicked, this,
          [this] { job_.EditFlag(TargetUrlItem::Opt, false); });
  connect(c_.Opt_1, &QRadioButton::clicked, this,
          [this] { job_.EditFlag(TargetUrlItem::Opt, true); });
  connect(&job, &JobEditor::Loaded, this, &JobBinding::ShowFields);
  connect(&job, &JobEditor::FieldEdited, this, &JobBinding::ShowField);
  connect(&job, &JobEditor::RootBaseChanged, this,
          [this] { ShowText(c_.txtUrl_RootBase, job_.RootBase()); });
  connect(&job, &JobEditor::BeforeDateChanged, this, &JobBinding::ShowBeforeDate);
  ShowFields();
}

void JobBinding::SetEditable(bool editable) {
  if (editable == editable_) return;
  editable_ = editable;
  ShowModes();
}

void JobBinding::BindText(QLineEdit* edit, TargetUrlItem::Field field) {
  texts_.push_back({field, edit});
  connect(edit, &QLineEdit::textEdited, this,
          [this, field](const QString& text) { job_.Edit(field, text); });
}

void JobBinding::BindCombo(QComboBox* combo, TargetUrlItem::Field field) {
  BindText(combo->lineEdit(), field);
  connect(combo, &QComboBox::textActivated, this,
          [this, field](const QString& text) { job_.Edit(field, text); });
}

void JobBinding::BindBefore(QComboBox* combo, int element) {
  const auto edit = [this, element](const QString& text) { job_.EditBefore(element, text); };
  connect(combo->lineEdit(), &QLineEdit::textEdited, this, edit);
  connect(combo, &QComboBox::textActivated, this, edit);
}

void JobBinding::BindFlag(QCheckBox* box, TargetUrlItem::Field field) {
  flags_.push_back({field, box});
  connect(box, &QCheckBox::clicked, this, [this, field](bool on) { job_.EditFlag(field, on); });
}

void JobBinding::ShowFields() {
  for (const TextControl& text : texts_) ShowText(text.edit, job_[text.field]);
  for (const FlagControl& flag : flags_) flag.box->setChecked(job_.Flag(flag.field));
  ShowText(c_.cmbBefore_0->lineEdit(), job_.Fields().BeforeElement(0));
  ShowText(c_.cmbBefore_1->lineEdit(), job_.Fields().BeforeElement(1));
  ShowText(c_.txtUrl_RootBase, job_.RootBase());
  ShowBeforeDate();
  ShowModes();
}

void JobBinding::ShowField(TargetUrlItem::Field field) {
  for (const TextControl& text : texts_) {
    if (text.field == field) ShowText(text.edit, job_[field]);
  }
  for (const FlagControl& flag : flags_) {
    if (flag.field == field) flag.box->setChecked(job_.Flag(field));
  }
  if (field == TargetUrlItem::Before) {
    ShowText(c_.cmbBefore_0->lineEdit(), job_.Fields().BeforeElement(0));
    ShowText(c_.cmbBefore_1->lineEdit(), job_.Fields().BeforeElement(1));
  }
  ShowModes();
}

void JobBinding::ShowModes() {
  const bool byDate = job_.Flag(TargetUrlItem::Opt);
  (byDate ? c_.Opt_1 : c_.Opt_0)->setChecked(true);
  SetShown(c_.frOpt_0, !byDate);
  SetShown(c_.frOpt_1, byDate);
  SetShown(c_.frGo_All, !byDate);
  c_.ChkOnlyInSite->setEnabled(editable_ && !byDate);
  c_.ChkTreeFolder->setEnabled(editable_ && !byDate);
  const bool crawls = !job_[TargetUrlItem::SubPattern].isEmpty();
  SetShown(c_.cmdGo_All_0, crawls);
  SetShown(c_.frDepth, crawls);
  SetShown(c_.ChkModify, job_.Flag(TargetUrlItem::DispModify));
  SetShown(c_.frModify, job_.Flag(TargetUrlItem::Modify));
  ShowFormatPreview();
}

void JobBinding::SetShown(QWidget* control, bool shown) {
  if (control->isHidden() != shown) return;
  control->setVisible(shown);
  Q_EMIT LayoutNeeded();
}

void JobBinding::ShowFormatPreview() {
  if (!job_.Flag(TargetUrlItem::Opt)) return;
  const QString text = ExpandDateTemplates(job_[TargetUrlItem::Format], clock_.Now());
  if (c_.lblFileFormat->text() == text) return;
  c_.lblFileFormat->setText(text);
  // Tool tips read marks as HTML, and the format comes from a file.
  c_.lblFileFormat->setToolTip(text.isEmpty() ? text : Qt::convertFromPlainText(text));
}

void JobBinding::ShowBeforeDate() {
  c_.lblBeforeDate->setText(job_.BeforeDate());
}

}  // namespace zentorin
