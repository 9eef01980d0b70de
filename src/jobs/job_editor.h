// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "jobs/target_url_item.h"

namespace zentorin {

class UrlList;

// The selected job as the main window shows it. Each edit is stored in the list and sets its tag.
class JobEditor : public QObject {
  Q_OBJECT

 public:
  explicit JobEditor(UrlList& list, QObject* parent = nullptr);

  const TargetUrlItem& Fields() const { return fields_; }
  QString operator[](TargetUrlItem::Field field) const { return fields_[field]; }
  bool Flag(TargetUrlItem::Field field) const { return fields_.Flag(field); }

  // Does nothing when the value is the same.
  void Edit(TargetUrlItem::Field field, const QString& value);
  void EditFlag(TargetUrlItem::Field field, bool on);
  void EditBefore(int element, const QString& text);

  void Store();

  int Depth() const;

  // `txtUrl_RootBase`: the root's base address as the last crawl found it, empty for another root.
  const QString& RootBase() const { return rootBase_; }
  void SetRootBase(const QString& address);

  const QString& BeforeDate() const { return beforeDate_; }
  void SetBeforeDate(const QString& text);

 Q_SIGNALS:
  void Loaded();
  void FieldEdited(TargetUrlItem::Field field);
  void RootBaseChanged();
  void BeforeDateChanged();

 private:
  void Load(int row);

  UrlList& list_;
  TargetUrlItem fields_;
  QString rootBase_;
  QString beforeDate_;  // `lblBeforeDate`
};

}  // namespace zentorin
