// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

namespace zentorin {

// Takes a dropped list file, also on a text field, which would take its path as text.
class ListDrop : public QObject {
  Q_OBJECT

 public:
  // Watches the window, which owns the object, and the text fields that it has by now.
  explicit ListDrop(QWidget* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Dropped(const QString& path);
};

}  // namespace zentorin
