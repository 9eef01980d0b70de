// SPDX-License-Identifier: MIT
#include "ui/key_filter.h"

#include <QKeyEvent>

namespace zentorin {

KeyFilter::KeyFilter(const QString& characterClass, Mode mode, QObject* target)
    : QObject(target), class_(characterClass), mode_(mode) {
  target->installEventFilter(this);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const QString text = key->text();
  const auto command = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  if (text.isEmpty() || !text.at(0).isPrint() || (key->modifiers() & command) != 0) return false;
  const bool matches = class_.match(text).hasMatch();
  const bool refused = matches == (mode_ == Mode::AllButMatching);
  if (refused) Q_EMIT Refused();
  return refused;
}

}  // namespace zentorin
