// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace zentorin {

// Keys and wheel step through the entries only from one of them, never away from a text of the
// user's own; the wheel only while the box is in use.
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
