// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QModelIndex>

class QAbstractItemView;

namespace zentorin {

// Comes up as the right button goes down, which changes neither selection nor current row, and on
// the menu key. Its shortcuts work while the list, its owner, has the focus.
class ContextMenu : public QMenu {
  Q_OBJECT

 public:
  ContextMenu(const char* name, QAbstractItemView& list);

  void OnlyWithEntries() { onlyWithEntries_ = true; }  // else over an empty list too

  QAction* AddEntry(const char* name, const QString& caption, const QKeySequence& keys = {});

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void AskedByMouse(const QModelIndex& entry);  // before it is shown; invalid over the empty part

 private:
  bool Pressed(const QMouseEvent& event);
  bool Asked(const QContextMenuEvent& event);
  void ShowAt(const QPoint& position);

  QAbstractItemView& list_;
  bool onlyWithEntries_ = false;
};

}  // namespace zentorin
