// SPDX-License-Identifier: MIT
#include "download/desktop_notices.h"

#include <QDBusMessage>
#include <QVariantMap>

#include "base/message_bus.h"

namespace zentorin {

void DesktopNotices::Show(const QString& title, const QString& text) {
  const QString service = QStringLiteral("org.freedesktop.Notifications");
  constexpr quint32 kReplacesNone = 0;
  constexpr int kUsualTime = -1;
  QDBusMessage call = QDBusMessage::createMethodCall(
      service, QStringLiteral("/org/freedesktop/Notifications"), service, QStringLiteral("Notify"));
  // The text may be read as mark-up.
  call << QStringLiteral("Zentorin") << kReplacesNone << QStringLiteral("zentorin") << title
       << text.toHtmlEscaped() << QStringList() << QVariantMap() << kUsualTime;
  bus_.Send(call);
}

}  // namespace zentorin
