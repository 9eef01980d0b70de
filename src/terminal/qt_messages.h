// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace zentorin {

class Terminal;

// As long as it lives, what Qt and this program say through Qt's logging goes to the terminal as
// lines of its own, from whichever thread: on a terminal it would else run into the line that is
// being refreshed. At most one object lives at a time.
class QtMessages : public QObject {
 public:
  // `terminal` outlives the object.
  explicit QtMessages(Terminal& terminal);
  ~QtMessages() override;

 private:
  static void Take(QtMsgType type, const QMessageLogContext& context, const QString& text);

  Terminal& terminal_;
};

}  // namespace zentorin
