// SPDX-License-Identifier: MIT
#include "ui/link_label.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "ui/readable_colour.h"

namespace zentorin {

LinkLabel::LinkLabel(const QString& text, bool asLink, QWidget* parent)
    : QLabel(text, parent), asLink_(asLink) {
  ApplyLook();
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
  QLabel::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
    Q_EMIT Clicked();
  }
}

void LinkLabel::mouseDoubleClickEvent(QMouseEvent* event) {
  QLabel::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton) Q_EMIT DoubleClicked();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Clicked();
      return;
    default:
      QLabel::keyPressEvent(event);
  }
}

void LinkLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ApplyLook();
}

void LinkLabel::ApplyLook() {
  if (!asLink_ || applyingLook_) return;
  applyingLook_ = true;
  // The colour of links that a desktop sets is not always made for its dark windows.
  QPalette look;
  const QColor link = ReadableColour(look.color(QPalette::Link), look);
  look.setColor(QPalette::Active, QPalette::WindowText, link);
  look.setColor(QPalette::Inactive, QPalette::WindowText, link);
  setPalette(look);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
  applyingLook_ = false;
}

}  // namespace zentorin
