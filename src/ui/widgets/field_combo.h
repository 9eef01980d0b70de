// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace zentorin {

// A combo box whose text is the user's own. Keys and wheel step through its entries only from one
// of them, never away from a text that would be lost; and the wheel only while the box is in use,
// so that a scroll that passes over it edits no job.
class FieldCombo : public QComboBox {
 public:
  explicit FieldCombo(QWidget* parent = nullptr);

  void showPopup() override;

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Makes the entry that reads like the text the current one; false when there is none.
  bool StandOnEntry();
};

}  // namespace zentorin
