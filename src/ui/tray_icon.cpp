// SPDX-License-Identifier: MIT
#include "ui/tray_icon.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

TrayIcon::TrayIcon(QObject* parent)
    : QObject(parent), icon_(QIcon(u":/icons/zentorin.svg"_s), this) {
  connect(&icon_, &QSystemTrayIcon::activated, this,
          [this](QSystemTrayIcon::ActivationReason reason) {
            // Desktops differ in which of the two they report for the usual way to open.
            if (reason == QSystemTrayIcon::DoubleClick || reason == QSystemTrayIcon::Trigger) {
              Q_EMIT RestoreRequested();
            }
          });
}

bool TrayIcon::IsAvailable() {
  return QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIcon::Add() {
  icon_.setToolTip(QString());
  icon_.show();
}

void TrayIcon::SetTip(const QString& tip) {
  icon_.setToolTip(tip);
}

void TrayIcon::Remove() {
  icon_.hide();
}

}  // namespace zentorin
