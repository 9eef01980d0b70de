// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "jobs/target_url_item.h"

namespace zentorin {

class UrlList;

// The fields of the selected job as the main window edits them. Selecting a job loads them; every
// edit is written straight back into the job's line and marks the list "Dirty". Loading is not an
// edit. `list` must outlive the editor.
class JobEditor : public QObject {
  Q_OBJECT

 public:
  explicit JobEditor(UrlList& list, QObject* parent = nullptr);

  const TargetUrlItem& Fields() const { return fields_; }
  const QString& operator[](TargetUrlItem::Field field) const { return fields_[field]; }
  bool Flag(TargetUrlItem::Field field) const { return fields_.Flag(field); }

  // An edit by the user: takes the value over, announces it and stores the job. Line breaks and
  // tabs, which the list cannot hold, become blanks. Nothing happens when the value is the same.
  void Edit(TargetUrlItem::Field field, const QString& value);
  void EditFlag(TargetUrlItem::Field field, bool on);
  void EditBefore(int element, const QString& text);

  // Rebuilds the selected job's line from the fields and marks the list. Does nothing without a
  // selected job.
  void Store();

  // The number in the depth field.
  int Depth() const;

  // `txtUrl_RootBase`: the root's base address as the last crawl found it; empty once a job with
  // another root is loaded. Not part of the job.
  const QString& RootBase() const { return rootBase_; }
  void SetRootBase(const QString& address);

  // `lblBeforeDate`: the day window as two dates.
  const QString& BeforeDate() const { return beforeDate_; }
  void SetBeforeDate(const QString& text);

 Q_SIGNALS:
  void Loaded();                                 // all fields at once
  void FieldEdited(TargetUrlItem::Field field);  // one field, by Edit…()
  void RootBaseChanged();
  void BeforeDateChanged();

 private:
  void Load(int row);

  UrlList& list_;
  TargetUrlItem fields_;
  QString rootBase_;
  QString beforeDate_;
};

}  // namespace zentorin
