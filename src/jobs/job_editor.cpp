// SPDX-License-Identifier: MIT
#include "jobs/job_editor.h"

#include "base/number_text.h"
#include "jobs/url_list.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDateWidth = 3;

// A job as the fields show it.
TargetUrlItem AsShown(TargetUrlItem item) {
  // An empty window means all dates and is therefore not padded.
  const QString date = item[TargetUrlItem::Date];
  if (!date.isEmpty()) item.Set(TargetUrlItem::Date, PadLeft(date, kDateWidth));
  item.Set(TargetUrlItem::Depth, QString::number(WholeNumber(item[TargetUrlItem::Depth])));
  item.SetBeforeElement(0, item.BeforeElement(0));  // exactly two elements
  for (const TargetUrlItem::Field flag : TargetUrlItem::kFlags) item.SetFlag(flag, item.Flag(flag));
  return item;
}

}  // namespace

JobEditor::JobEditor(UrlList& list, QObject* parent) : QObject(parent), list_(list) {
  connect(&list_, &UrlList::Selected, this, &JobEditor::Load);
}

void JobEditor::Edit(TargetUrlItem::Field field, const QString& value) {
  TargetUrlItem edited = fields_;
  edited.Set(field, value);
  // The display number is the list's own.
  if (field == TargetUrlItem::Number || edited == fields_) return;
  fields_ = edited;
  Q_EMIT FieldEdited(field);
  Store();
}

void JobEditor::EditFlag(TargetUrlItem::Field field, bool on) {
  Edit(field, on ? u"1"_s : u"0"_s);
}

void JobEditor::EditBefore(int element, const QString& text) {
  TargetUrlItem changed = fields_;
  // A comma would move the border between the two elements.
  changed.SetBeforeElement(element, QString(text).replace(u',', u' '));
  Edit(TargetUrlItem::Before, changed[TargetUrlItem::Before]);
}

void JobEditor::Store() {
  const int row = list_.SelectedRow();
  if (row < 0) return;
  fields_.Set(TargetUrlItem::Number, DisplayNumber(row));
  list_.Set(row, fields_);
  list_.SetDirty(true);
}

int JobEditor::Depth() const {
  return WholeNumber(fields_[TargetUrlItem::Depth]);
}

void JobEditor::SetRootBase(const QString& address) {
  if (address == rootBase_) return;
  rootBase_ = address;
  Q_EMIT RootBaseChanged();
}

void JobEditor::SetBeforeDate(const QString& text) {
  if (text == beforeDate_) return;
  beforeDate_ = text;
  Q_EMIT BeforeDateChanged();
}

void JobEditor::Load(int row) {
  const QString root = fields_[TargetUrlItem::Root];
  fields_ = row < 0 ? TargetUrlItem() : AsShown(list_.Item(row));
  // The base that a crawl found is that of its own root, not of another job's.
  if (fields_[TargetUrlItem::Root] != root) SetRootBase(QString());
  Q_EMIT Loaded();
}

}  // namespace zentorin
