// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class Terminal;

// As long as it lives, what is said through Qt's logging goes to the terminal as lines of its own,
// from whichever thread. At most one object lives at a time.
class QtMessages : public QObject {
 public:
  explicit QtMessages(Terminal& terminal);
  ~QtMessages() override;

 private:
  static void Take(QtMsgType type, const QMessageLogContext& context, const QString& text);

  Terminal& terminal_;
};

}  // namespace zentorin
