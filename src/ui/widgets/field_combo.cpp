// SPDX-License-Identifier: MIT
#include "ui/widgets/field_combo.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "ui/widgets/fixed_pitch_font.h"

namespace zentorin {

FieldCombo::FieldCombo(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
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
  // A date that was stored is padded.
  const QString text = currentText().trimmed();
  const int entry = text.isEmpty() ? -1 : findText(text, Qt::MatchExactly);
  if (entry < 0) return false;
  const QSignalBlocker blocker(this);
  setCurrentIndex(entry);
  return true;
}

}  // namespace zentorin
