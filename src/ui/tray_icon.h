// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSystemTrayIcon>

namespace zentorin {

class TrayIcon : public QObject {
  Q_OBJECT

 public:
  explicit TrayIcon(QObject* parent = nullptr);

  static bool IsAvailable();  // else the window is minimised

  void Add();  // with an empty tip
  void SetTip(const QString& tip);
  void Remove();
  bool IsShown() const { return icon_.isVisible(); }

 Q_SIGNALS:
  void RestoreRequested();  // by click, menu or key

 private:
  QSystemTrayIcon icon_;
};

}  // namespace zentorin
