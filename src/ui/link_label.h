// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace zentorin {

// A label that answers clicks, by mouse or by Space and Enter. Drawn as a link when `asLink` is
// set.
class LinkLabel : public QLabel {
  Q_OBJECT

 public:
  LinkLabel(const QString& text, bool asLink, QWidget* parent);

 Q_SIGNALS:
  void Clicked();
  void DoubleClicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void ApplyLook();

  bool asLink_;
  bool applyingLook_ = false;
};

}  // namespace zentorin
