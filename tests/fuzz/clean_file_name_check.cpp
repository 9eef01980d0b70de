// SPDX-License-Identifier: MIT
#include "tests/fuzz/clean_file_name_check.h"

#include <QRegularExpression>
#include <QStringList>

#include "base/file_names.h"

namespace zentorin::test {
namespace {

bool Matches(const QString& text, const QString& pattern) {
  return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption)
      .match(text)
      .hasMatch();
}

QString FaultOfSegment(const QString& segment) {
  const QByteArray utf8 = segment.toUtf8();
  if (segment.isEmpty()) return QStringLiteral("empty");
  if (utf8.size() > 255) return QStringLiteral("too long");
  if (QString::fromUtf8(utf8) != segment) return QStringLiteral("half a character");
  if (Matches(segment, QStringLiteral("[/\\\\\\x00-\\x1f\\x7f-\\x9f\\x{61c}\\x{200e}\\x{200f}"
                                      "\\x{2028}-\\x{202e}\\x{2066}-\\x{2069}\\x{feff}]")))
    return QStringLiteral("unsafe character");
  if (Matches(segment, QStringLiteral("^ |[ .]$"))) return QStringLiteral("untrimmed");
  if (Matches(segment, QStringLiteral("^(con|prn|aux|nul|(com|lpt)[1-9]) *(\\.|$)")))
    return QStringLiteral("device");
  if (Matches(segment, QStringLiteral("^[a-z]:"))) return QStringLiteral("drive");
  if (!segment.contains(QLatin1Char('%')) && CleanFileName(segment) != segment)
    return QStringLiteral("a second cleaning changes it");
  return {};
}

}  // namespace

QString FaultOfCleanedName(const QString& name) {
  QString fault = FaultOfSegment(CleanFileName(name));
  if (!fault.isEmpty()) return fault;
  const QString path = CleanRelativePath(name);
  if (path.isEmpty()) return {};
  for (const QString& segment : path.split(QLatin1Char('\\'))) {
    const QString segmentFault = FaultOfSegment(segment);
    if (!segmentFault.isEmpty()) return QStringLiteral("in a path: ") + segmentFault;
  }
  return {};
}

}  // namespace zentorin::test
