// SPDX-License-Identifier: MIT
#include "ui/widgets/key_filter.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWidget>

namespace zentorin {
namespace {

// Whether a key types its text into a field. Only Ctrl alone or with Shift makes a key a command:
// the third level of a keyboard (AltGr) may come as Ctrl and Alt.
bool Types(const QKeyEvent& key) {
  const QString text = key.text();
  constexpr char16_t kDelete = 0x7F;
  if (text.isEmpty() || text.at(0) < u' ' || text.at(0) == kDelete) return false;
  const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
  return modifiers != Qt::ControlModifier && modifiers != (Qt::ControlModifier | Qt::ShiftModifier);
}

}  // namespace

KeyFilter::KeyFilter(const QString& characterClass, Mode mode, QWidget* target)
    : QObject(target), class_(QRegularExpression::anchoredPattern(characterClass)), mode_(mode) {
  target->installEventFilter(this);
}

bool KeyFilter::Refuses(const QString& character) const {
  return class_.match(character).hasMatch() == (mode_ == Mode::AllButMatching);
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::InputMethod) {
    return FilterCommit(watched, *static_cast<QInputMethodEvent*>(event));
  }
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool refused = Types(*key) && Refuses(key->text());
  if (refused) Q_EMIT Refused();
  return refused;
}

// An input method commits several characters at once: the good ones among them are let through.
bool KeyFilter::FilterCommit(QObject* watched, const QInputMethodEvent& event) {
  QString kept;
  for (const char32_t code : event.commitString().toUcs4()) {
    const QString character = QString::fromUcs4(&code, 1);
    if (!Refuses(character)) kept += character;
  }
  if (kept == event.commitString()) return false;
  QInputMethodEvent rest(event.preeditString(), event.attributes());
  rest.setCommitString(kept, event.replacementStart(), event.replacementLength());
  QCoreApplication::sendEvent(watched, &rest);
  Q_EMIT Refused();
  return true;
}

}  // namespace zentorin
