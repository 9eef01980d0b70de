// SPDX-License-Identifier: MIT
#include "jobs/target_url_item.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

TargetUrlItem TargetUrlItem::FromLine(const QString& line) {
  TargetUrlItem item;
  qsizetype start = 0;
  for (QString& field : item.fields_) {
    const qsizetype tab = line.indexOf(u'\t', start);
    field = line.mid(start, tab < 0 ? -1 : tab - start);
    if (tab < 0) break;
    start = tab + 1;
  }
  return item;
}

QString TargetUrlItem::ToLine() const {
  QString line = fields_[0];
  for (int i = 1; i < kFieldCount; ++i) line += u'\t' + fields_[i];
  return line;
}

void TargetUrlItem::SetFlag(Field field, bool on) {
  fields_[field] = on ? u"1"_s : u"0"_s;
}

QString TargetUrlItem::BeforeElement(int element) const {
  return fields_[Before].section(u',', element, element);
}

void TargetUrlItem::SetBeforeElement(int element, const QString& text) {
  const QString first = element == 0 ? text : BeforeElement(0);
  const QString second = element == 1 ? text : BeforeElement(1);
  fields_[Before] = first + u',' + second;
}

QString FieldText(QString text) {
  for (QChar& c : text) {
    if (c == u'\t' || c == u'\r' || c == u'\n' || c.isNull()) c = u' ';
  }
  return text;
}

QString DisplayNumber(int row) {
  return QString::number(row + 1).rightJustified(2);
}

}  // namespace zentorin
