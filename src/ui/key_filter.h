// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRegularExpression>

namespace zentorin {

// Swallows typed keys by their character; keys that type nothing (backspace, arrows, shortcuts)
// pass. Text that is pasted or set is not looked at: the filter is about keys.
class KeyFilter : public QObject {
  Q_OBJECT

 public:
  enum class Mode { OnlyMatching, AllButMatching };

  // Watches `target`, which also owns the filter. `characterClass` is an expression for one
  // character.
  KeyFilter(const QString& characterClass, Mode mode, QObject* target);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Refused();

 private:
  QRegularExpression class_;
  Mode mode_;
};

}  // namespace zentorin
