// SPDX-License-Identifier: MIT
#include "power/desktop_notices.h"

#include <QDBusMessage>
#include <QVariantMap>

#include "base/message_bus.h"
#include "base/product_name.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

void DesktopNotices::Show(const QString& title, const QString& text) {
  const QString service = u"org.freedesktop.Notifications"_s;
  constexpr quint32 kReplacesNone = 0;
  constexpr int kUsualTime = -1;
  QDBusMessage call = QDBusMessage::createMethodCall(service, u"/org/freedesktop/Notifications"_s,
                                                     service, u"Notify"_s);
  // The text may be read as mark-up.
  call << ProductName() << kReplacesNone << u"zentorin"_s << title << text.toHtmlEscaped()
       << QStringList() << QVariantMap() << kUsualTime;
  bus_.Send(call);
}

}  // namespace zentorin
