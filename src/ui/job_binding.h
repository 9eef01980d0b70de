// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <vector>

#include "jobs/target_url_item.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QWidget;

namespace zentorin {

class DisplayClock;
class JobEditor;
struct MainControls;

// Ties the fields of the selected job to their controls: every edit by the user goes to the job at
// once, but what is chosen from a pattern box's list is an edit by its expression only
// (PatternChoice). Also holds what the controls demand of each other.
class JobBinding : public QObject {
  Q_OBJECT

 public:
  JobBinding(JobEditor& job, const DisplayClock& clock, MainControls& controls,
             QObject* parent = nullptr);

  void ShowFormatPreview();

  // Whether the busy state allows edits.
  void SetEditable(bool editable);

 Q_SIGNALS:
  void LayoutNeeded();  // controls were shown or hidden

 private:
  void BindText(QLineEdit* edit, TargetUrlItem::Field field);
  void BindCombo(QComboBox* combo, TargetUrlItem::Field field);
  void BindBefore(QComboBox* combo, int element);
  void BindFlag(QCheckBox* box, TargetUrlItem::Field field);
  void ShowFields();
  void ShowField(TargetUrlItem::Field field);
  void ShowModes();
  void ShowBeforeDate();

  void SetShown(QWidget* control, bool shown);

  JobEditor& job_;
  const DisplayClock& clock_;
  MainControls& c_;
  bool editable_ = true;
  struct TextControl {
    TargetUrlItem::Field field;
    QLineEdit* edit;
  };
  struct FlagControl {
    TargetUrlItem::Field field;
    QCheckBox* box;
  };
  std::vector<TextControl> texts_;
  std::vector<FlagControl> flags_;
};

}  // namespace zentorin
