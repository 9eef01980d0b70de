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

// Ties the fields of the selected job to their controls: loading fills the controls, every edit by
// the user goes to the job at once. What is chosen from a pattern box's list is the exception: it
// is a label and an expression, and only the expression is an edit (PatternChoice). Also holds what
// the controls demand of each other: the two modes, the boxes that show further fields, and the
// pattern boxes' depth and crawl preview. All references must outlive the binding.
class JobBinding : public QObject {
  Q_OBJECT

 public:
  JobBinding(JobEditor& job, const DisplayClock& clock, MainControls& controls,
             QObject* parent = nullptr);

  // Shows what the file format makes of the clock's time.
  void ShowFormatPreview();

  // Whether the busy state allows edits; `ChkOnlyInSite` and `ChkTreeFolder` depend on it and the
  // mode.
  void SetEditable(bool editable);

 Q_SIGNALS:
  // Controls were shown or hidden: the window has to lay itself out again.
  void LayoutNeeded();

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
