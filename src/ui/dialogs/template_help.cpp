// SPDX-License-Identifier: MIT
#include "ui/dialogs/template_help.h"

#include <QDateTime>
#include <QStringList>

#include "jobs/date_template.h"

namespace zentorin {

QString TemplateHelpText() {
  const QString example = QStringLiteral("http://www.example.com/{yyyy-mm}/english{yyyymmdd}.mp3");
  const QDateTime day(QDate(2011, 5, 10), QTime(0, 0), Qt::UTC);
  const QStringList lines{
      QStringLiteral("{ yyyymmdd } のように { } で囲まれた内容は日付に変換される。"),
      QString(),
      QStringLiteral("　　ここで y , m , d は、それぞれ　年,月,日 を表す"),
      QStringLiteral("　　{ yyyymmdd }　→ 20110510 左詰めに 0 が付加された桁数"),
      QStringLiteral("　　{ yyyymd }  　　→ 2011510"),
      QString(),
      QStringLiteral("例"),
      QStringLiteral("　　") + example,
      QStringLiteral("　　→ ") + ExpandDateTemplates(example, day),
  };
  return lines.join(QLatin1String("\r\n"));
}

}  // namespace zentorin
