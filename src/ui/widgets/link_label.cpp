// SPDX-License-Identifier: MIT
#include "ui/widgets/link_label.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include "ui/widgets/readable_colour.h"

namespace zentorin {

LinkLabel::LinkLabel(const QString& text, Kind kind, QWidget* parent)
    : QLabel(text, parent), kind_(kind) {
  if (kind != Kind::Plain) setFocusPolicy(Qt::TabFocus);
  ApplyLook();
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
  QLabel::mouseReleaseEvent(event);
  if (kind_ != Kind::DoubleClick && event->button() == Qt::LeftButton &&
      rect().contains(event->position().toPoint())) {
    Q_EMIT Activated();
  }
}

void LinkLabel::mouseDoubleClickEvent(QMouseEvent* event) {
  QLabel::mouseDoubleClickEvent(event);
  if (kind_ == Kind::DoubleClick && event->button() == Qt::LeftButton) Q_EMIT Activated();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Activated();
      return;
    default:
      QLabel::keyPressEvent(event);
  }
}

void LinkLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ApplyLook();
}

void LinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

void LinkLabel::ApplyLook() {
  if (kind_ != Kind::Link || applyingLook_) return;
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
  applyingLook_ = false;
}

}  // namespace zentorin
