// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRegularExpression>

class QInputMethodEvent;
class QWidget;

namespace zentorin {

// Swallows typed characters, whether they come from a key or from an input method; keys that type
// nothing (backspace, arrows, shortcuts) pass. Text that is pasted or set is not looked at: the
// filter is about typing.
class KeyFilter : public QObject {
  Q_OBJECT

 public:
  enum class Mode { OnlyMatching, AllButMatching };

  // Watches `target`, which also owns the filter. It has to be the widget that gets the keys: for
  // an editable combo box that is the box, not its text field. `characterClass` is an expression
  // for one character.
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
