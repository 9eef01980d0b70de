// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSystemTrayIcon>

namespace zentorin {

// The icon in the notification area behind which the window waits in tray mode.
class TrayIcon : public QObject {
  Q_OBJECT

 public:
  explicit TrayIcon(QObject* parent = nullptr);

  // Whether the desktop has a notification area; without one the window is minimised instead.
  static bool IsAvailable();

  // Adds the icon with an empty tip.
  void Add();
  void SetTip(const QString& tip);
  void Remove();
  bool IsShown() const { return icon_.isVisible(); }

 Q_SIGNALS:
  // A click on the icon, its menu or its activation by a key: the window is wanted back.
  void RestoreRequested();

 private:
  QSystemTrayIcon icon_;
};

}  // namespace zentorin
