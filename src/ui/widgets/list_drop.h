// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

namespace zentorin {

// Takes a list file that is dropped on a window, also where it falls on a text field, which would
// otherwise take its path as text. Everything else that is dropped goes its usual way.
class ListDrop : public QObject {
  Q_OBJECT

 public:
  // Watches the window, which also owns the object, and the text fields that it has by now.
  explicit ListDrop(QWidget* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Dropped(const QString& path);
};

}  // namespace zentorin
