// SPDX-License-Identifier: MIT
#include "jobs/target_url_item.h"

#include <QRegularExpression>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

TargetUrlItem TargetUrlItem::FromLine(const QString& text) {
  static const QRegularExpression lineEnd(u"[\\r\\n\\0]"_s);
  TargetUrlItem item;
  item.fields_ = text.left(text.indexOf(lineEnd)).split(u'\t');
  return item;
}

void TargetUrlItem::Set(Field field, const QString& value) {
  fields_.resize(kFieldCount);
  fields_[field] = FieldText(value);
}

void TargetUrlItem::SetFlag(Field field, bool on) {
  Set(field, on ? u"1"_s : u"0"_s);
}

QString TargetUrlItem::BeforeElement(int element) const {
  return (*this)[Before].section(u',', element, element);
}

void TargetUrlItem::SetBeforeElement(int element, const QString& text) {
  const QString first = element == 0 ? text : BeforeElement(0);
  const QString second = element == 1 ? text : BeforeElement(1);
  Set(Before, first + u',' + second);
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
