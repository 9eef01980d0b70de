// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace zentorin {

// All but the plain kind are reached by Tab and answer Space and Enter.
class LinkLabel : public QLabel {
  Q_OBJECT

 public:
  enum class Kind {
    Plain,        // answers a click of the mouse
    Link,         // drawn as a link; answers a click
    DoubleClick,  // answers a double-click
  };

  LinkLabel(const QString& text, Kind kind, QWidget* parent);

 Q_SIGNALS:
  void Activated();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void ApplyLook();

  Kind kind_;
  bool applyingLook_ = false;
};

}  // namespace zentorin
