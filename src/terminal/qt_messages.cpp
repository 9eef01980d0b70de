// SPDX-License-Identifier: MIT
#include "terminal/qt_messages.h"

#include <QThread>
#include <atomic>
#include <mutex>

#include "terminal/terminal.h"

namespace zentorin {
namespace {

// Held while a message is handed over, so that no thread meets an object that is gone.
std::mutex handOver;
QtMessages* receiver = nullptr;
std::atomic<QtMessageHandler> handlerBefore = nullptr;

}  // namespace

QtMessages::QtMessages(Terminal& terminal) : terminal_(terminal) {
  const std::lock_guard lock(handOver);
  receiver = this;
  handlerBefore = qInstallMessageHandler(&QtMessages::Take);
}

QtMessages::~QtMessages() {
  qInstallMessageHandler(handlerBefore);
  const std::lock_guard lock(handOver);
  receiver = nullptr;
}

void QtMessages::Take(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    if (const QtMessageHandler before = handlerBefore) before(type, context, text);
    return;
  }
  const QString line = qFormatLogMessage(type, context, text);
  std::unique_lock lock(handOver);
  QtMessages* const messages = receiver;
  if (messages == nullptr) return;
  if (messages->thread() != QThread::currentThread()) {
    QMetaObject::invokeMethod(messages, [messages, line] { messages->terminal_.Line(line); });
    return;
  }
  // The terminal's own thread also destroys the object.
  lock.unlock();
  messages->terminal_.Line(line);
}

}  // namespace zentorin
