// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace zentorin {

// At most ten Due() a second: the first touch at once, the last of a burst never lost.
class ChangeThrottle : public QObject {
  Q_OBJECT

 public:
  explicit ChangeThrottle(QObject* parent = nullptr);

  void Touch();
  void Flush();  // announces a pending touch now

 Q_SIGNALS:
  void Due();

 private:
  void Announce();

  QElapsedTimer sinceLast_;
  QTimer timer_;
};

}  // namespace zentorin
