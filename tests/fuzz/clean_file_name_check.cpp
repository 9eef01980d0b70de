// SPDX-License-Identifier: MIT
#include "tests/fuzz/clean_file_name_check.h"

#include <QRegularExpression>
#include <QStringList>

#include "base/file_names.h"

namespace zentorin::test {

using namespace Qt::Literals::StringLiterals;

namespace {

bool Matches(const QString& text, const QString& pattern) {
  return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption)
      .match(text)
      .hasMatch();
}

QString FaultOfSegment(const QString& segment) {
  const QByteArray utf8 = segment.toUtf8();
  if (segment.isEmpty()) return u"empty"_s;
  if (utf8.size() > 255) return u"too long"_s;
  if (QString::fromUtf8(utf8) != segment) return u"half a character"_s;
  if (Matches(segment,
              u"[/\\\\\\x00-\\x1f\\x7f-\\x9f\\x{61c}\\x{200e}\\x{200f}"
              "\\x{2028}-\\x{202e}\\x{2066}-\\x{2069}\\x{feff}]"_s))
    return u"unsafe character"_s;
  if (Matches(segment, u"^ |[ .]$"_s)) return u"untrimmed"_s;
  if (Matches(segment, u"^(con|prn|aux|nul|(com|lpt)[1-9]) *(\\.|$)"_s)) return u"device"_s;
  if (Matches(segment, u"^[a-z]:"_s)) return u"drive"_s;
  if (!segment.contains(u'%') && CleanFileName(segment) != segment)
    return u"a second cleaning changes it"_s;
  return {};
}

}  // namespace

QString FaultOfCleanedName(const QString& name) {
  QString fault = FaultOfSegment(CleanFileName(name));
  if (!fault.isEmpty()) return fault;
  const QString path = CleanRelativePath(name);
  if (path.isEmpty()) return {};
  for (const QString& segment : path.split(u'\\')) {
    const QString segmentFault = FaultOfSegment(segment);
    if (!segmentFault.isEmpty()) return u"in a path: "_s + segmentFault;
  }
  return {};
}

}  // namespace zentorin::test
