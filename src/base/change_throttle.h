// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace zentorin {

// Turns any number of Touch() calls into at most ten Due() signals a second. The first touch after
// a pause is announced at once, the last one of a burst is never lost.
class ChangeThrottle : public QObject {
  Q_OBJECT

 public:
  explicit ChangeThrottle(QObject* parent = nullptr);

  void Touch();
  // Announces a pending touch now.
  void Flush();

 Q_SIGNALS:
  void Due();

 private:
  void Announce();

  QElapsedTimer sinceLast_;
  QTimer timer_;
};

}  // namespace zentorin
