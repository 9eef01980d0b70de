// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRegularExpression>

class QInputMethodEvent;
class QWidget;

namespace zentorin {

// Swallows typed characters, from keys or an input method; pasted text is not looked at.
class KeyFilter : public QObject {
  Q_OBJECT

 public:
  enum class Mode { OnlyMatching, AllButMatching };

  // `target` owns the filter and is what gets the keys: of a combo box the box, not its text field.
  KeyFilter(const QString& characterClass, Mode mode, QWidget* target);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Refused();

 private:
  bool Refuses(const QString& character) const;
  bool FilterCommit(QObject* watched, const QInputMethodEvent& event);

  QRegularExpression class_;
  Mode mode_;
};

}  // namespace zentorin
