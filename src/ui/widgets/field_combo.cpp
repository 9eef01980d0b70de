// SPDX-License-Identifier: MIT
#include "ui/widgets/field_combo.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "ui/widgets/fixed_pitch_font.h"

namespace zentorin {

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
  // Numbers are padded, in the box or in the list.
  const QString text = currentText().trimmed();
  for (int entry = 0; entry < count() && !text.isEmpty(); ++entry) {
    if (itemText(entry).trimmed() != text) continue;
    const QSignalBlocker blocker(this);
    setCurrentIndex(entry);
    return true;
  }
  return false;
}

}  // namespace zentorin
