// SPDX-License-Identifier: MIT
#include "ui/widgets/field_combo.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "ui/widgets/fixed_pitch_font.h"

namespace zentorin {
namespace {

// Numbers may be padded, in the box or in the list.
bool ReadAlike(const QString& one, const QString& other) {
  bool isNumber = false;
  bool isOtherNumber = false;
  const bool same = one.toDouble(&isNumber) == other.toDouble(&isOtherNumber);
  return one == other || (isNumber && isOtherNumber && same);
}

}  // namespace

FieldCombo::FieldCombo(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
  // A text that reads like an entry is no choice of it: leaving the box chooses nothing.
  disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
  setFont(FixedPitchFont(font()));
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(5);
}

void FieldCombo::showPopup() {
  StandOnEntry();
  QComboBox::showPopup();
}

void FieldCombo::wheelEvent(QWheelEvent* event) {
  if (hasFocus() && StandOnEntry()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

void FieldCombo::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      if (StandOnEntry()) break;
      showPopup();
      return;
    default:
      break;
  }
  QComboBox::keyPressEvent(event);
}

bool FieldCombo::StandOnEntry() {
  for (int entry = 0; entry < count(); ++entry) {
    if (!ReadAlike(itemText(entry), currentText())) continue;
    const QSignalBlocker blocker(this);
    setCurrentIndex(entry);
    return true;
  }
  return false;
}

}  // namespace zentorin
