// SPDX-License-Identifier: MIT
#include "net/connect_to_map.h"

#include <QRegularExpression>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

CurlList ParseConnectToMap(const QString& text) {
  static const QRegularExpression form(
      uR"(\A(?:\[[0-9A-Fa-f:.]+\]|[^:\[\]\s]*):\d{0,5}:(?:\[[0-9A-Fa-f:.]+\]|[^:\[\]\s]*):\d{0,5}\z)"_s);
  CurlList list;
  for (const QString& entry : text.split(u',', Qt::SkipEmptyParts)) {
    const QString trimmed = entry.trimmed();
    if (form.match(trimmed).hasMatch()) {
      AppendTo(list, trimmed.toUtf8().constData());
    } else {
      qWarning("connect-to map: \"%s\" is not host:port:address:port", qUtf8Printable(trimmed));
    }
  }
  return list;
}

}  // namespace zentorin
