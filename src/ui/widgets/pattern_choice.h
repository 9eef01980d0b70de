// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class QComboBox;

namespace zentorin {

// A pattern box whose list offers labelled expressions. Choosing an entry leaves only its
// expression in the box; as the box's text cannot be replaced inside the choice event, a one-shot
// timer does it.
class PatternChoice : public QObject {
  Q_OBJECT

 public:
  // Watches `combo`, which also owns the object.
  PatternChoice(QComboBox& combo, const QString& timerName);

  // Forgets a choice whose expression is not in the box yet: the box shows another job now.
  void Forget() { timer_.stop(); }

  // Fills the list and keeps the text.
  void SetEntries(const QStringList& entries);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  // The expression that a choice left in the box.
  void Chosen(const QString& expression);
  // The text field of the box was double-clicked.
  void DoubleClicked();

 private:
  void KeepExpression();
  void WidenList();

  QComboBox& combo_;
  QTimer timer_;
};

}  // namespace zentorin
