// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QModelIndex>

class QAbstractItemView;

namespace zentorin {

// The context menu of a list. It comes up as the right mouse button goes down, which by itself
// changes neither selection nor current row, and on the keyboard's menu key. The shortcuts of its
// entries work while the list has the focus. Owned by the list.
class ContextMenu : public QMenu {
  Q_OBJECT

 public:
  ContextMenu(const char* name, QAbstractItemView& list);

  // Without it the menu comes up over an empty list too.
  void OnlyWithEntries() { onlyWithEntries_ = true; }

  QAction* AddEntry(const char* name, const QString& caption, const QKeySequence& keys = {});

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  // The mouse asks for the menu over this entry, invalid over the empty part of the list; before
  // the menu is shown.
  void AskedByMouse(const QModelIndex& entry);

 private:
  bool Pressed(const QMouseEvent& event);
  bool Asked(const QContextMenuEvent& event);
  void ShowAt(const QPoint& position);

  QAbstractItemView& list_;
  bool onlyWithEntries_ = false;
};

}  // namespace zentorin
