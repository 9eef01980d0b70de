// SPDX-License-Identifier: MIT
#include "tests/fuzz/clean_file_name_check.h"

#include <QRegularExpression>
#include <QStringList>

#include "base/file_names.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QRegularExpression Expression(const QString& pattern) {
  return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

QString FaultOfSegment(const QString& segment, PercentCodes codes) {
  // What no segment matches, and how such a fault is called.
  static const QPair<QRegularExpression, QString> kFaults[] = {
      {Expression(u"^$"_s), u"empty"_s},
      {Expression(u"[/\\\\\\x00-\\x1f\\x7f-\\x9f\\x{61c}\\x{200e}\\x{200f}"
                  "\\x{2028}-\\x{202e}\\x{2066}-\\x{2069}\\x{feff}]"_s),
       u"unsafe character"_s},
      {Expression(u"^ |[ .]$"_s), u"untrimmed"_s},
      {Expression(u"^(con|prn|aux|nul|(com|lpt)[1-9]) *(\\.|$)"_s), u"device"_s},
      {Expression(u"^[a-z]:"_s), u"drive"_s},
  };
  const QByteArray utf8 = segment.toUtf8();
  if (utf8.size() > 255) return u"too long"_s;
  if (QString::fromUtf8(utf8) != segment) return u"half a character"_s;
  for (const auto& [expression, fault] : kFaults) {
    if (expression.match(segment).hasMatch()) return fault;
  }
  const bool mayChange = codes == PercentCodes::Decode && segment.contains(u'%');
  const bool changes = !mayChange && CleanFileName(segment, codes) != segment;
  return changes ? u"a second cleaning changes it"_s : QString();
}

}  // namespace

QString FaultOfCleanedName(const QString& name) {
  for (const PercentCodes codes : {PercentCodes::Keep, PercentCodes::Decode}) {
    const QString path = CleanRelativePath(name, codes);
    QStringList segments{CleanFileName(name, codes)};
    if (!path.isEmpty()) segments += path.split(u'\\');
    for (const QString& segment : segments) {
      const QString fault = FaultOfSegment(segment, codes);
      if (!fault.isEmpty()) return fault;
    }
  }
  return {};
}

}  // namespace zentorin::test
