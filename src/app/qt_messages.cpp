// SPDX-License-Identifier: MIT
#include "app/qt_messages.h"

#include <atomic>

#include "app/terminal.h"

namespace zentorin {
namespace {

std::atomic<QtMessages*> receiver = nullptr;
QtMessageHandler handlerBefore = nullptr;

}  // namespace

QtMessages::QtMessages(Terminal& terminal) : terminal_(terminal) {
  receiver = this;
  handlerBefore = qInstallMessageHandler(&QtMessages::Take);
}

QtMessages::~QtMessages() {
  qInstallMessageHandler(handlerBefore);
  receiver = nullptr;
}

void QtMessages::Take(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  QtMessages* const messages = receiver;
  if (messages == nullptr || type == QtFatalMsg) {
    handlerBefore(type, context, text);
    return;
  }
  const QString line = qFormatLogMessage(type, context, text);
  // At once in the terminal's own thread.
  QMetaObject::invokeMethod(messages, [messages, line] { messages->terminal_.Line(line); });
}

}  // namespace zentorin
