// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class QComboBox;

namespace zentorin {

// Choosing a labelled expression leaves the expression in the box. A one-shot timer does it, as the
// text cannot be replaced inside the choice event.
class PatternChoice : public QObject {
  Q_OBJECT

 public:
  // Watches `combo`, which owns the object.
  PatternChoice(QComboBox& combo, const QString& timerName);

  void Forget() { timer_.stop(); }  // the box shows another job now

  void SetEntries(const QStringList& entries);  // keeps the text

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Chosen(const QString& expression);
  void DoubleClicked();  // in its text field

 private:
  void KeepExpression();
  void WidenList();

  QComboBox& combo_;
  QTimer timer_;
};

}  // namespace zentorin
