// SPDX-License-Identifier: MIT
#include "ui/widgets/context_menu.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>

namespace zentorin {

ContextMenu::ContextMenu(const char* name, QAbstractItemView& list) : QMenu(&list), list_(list) {
  setObjectName(QLatin1StringView(name));
  list.installEventFilter(this);
  list.viewport()->installEventFilter(this);
}

QAction* ContextMenu::AddEntry(const char* name, const QString& caption, const QKeySequence& keys) {
  QAction* action = addAction(caption);
  action->setObjectName(QLatin1StringView(name));
  if (keys.isEmpty()) return action;
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  action->setShortcutVisibleInContextMenu(true);
  list_.addAction(action);
  return action;
}

bool ContextMenu::eventFilter(QObject* watched, QEvent* event) {
  // By its kind first: events also come while the list is being taken down.
  const bool asked = event->type() == QEvent::ContextMenu;
  const bool pressed = event->type() == QEvent::MouseButtonPress;
  if ((!asked && !pressed) || !list_.isEnabled()) return QMenu::eventFilter(watched, event);
  if (asked) return Asked(*static_cast<QContextMenuEvent*>(event));
  return watched == list_.viewport() && Pressed(*static_cast<QMouseEvent*>(event));
}

bool ContextMenu::Pressed(const QMouseEvent& event) {
  if (event.button() != Qt::RightButton) return false;
  list_.setFocus(Qt::MouseFocusReason);
  Q_EMIT AskedByMouse(list_.indexAt(event.position().toPoint()));
  ShowAt(event.position().toPoint());
  return true;
}

// The mouse has had its answer by the press.
bool ContextMenu::Asked(const QContextMenuEvent& event) {
  if (event.reason() == QContextMenuEvent::Mouse) return true;
  const QRect entry = list_.visualRect(list_.currentIndex());
  const QRect shown = entry & list_.viewport()->rect();
  ShowAt(shown.isEmpty() ? QPoint() : QPoint(shown.left(), shown.bottom()));
  return true;
}

void ContextMenu::ShowAt(const QPoint& position) {
  const bool hasEntries = list_.model() != nullptr && list_.model()->rowCount() > 0;
  if (hasEntries || !onlyWithEntries_) popup(list_.viewport()->mapToGlobal(position));
}

}  // namespace zentorin
