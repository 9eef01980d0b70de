// SPDX-License-Identifier: MIT
#include "download/result_code.h"

namespace zentorin {

ResultReport ReportFor(int code, bool cancelRequested) {
  const QString failed = QStringLiteral("x");
  const QString passedOver = QStringLiteral("-");
  switch (code) {
    case kToolNotInstalled:
      return {QStringLiteral("  x Error - VLC not installed "), failed, true, true};
    case kFolderNotCreated:
      return {QStringLiteral("  x Error - failure to create folder "), failed, true, false};
    case kImperfect:
      return {cancelRequested ? QStringLiteral("  x Cancel - imperfect ")
                              : QStringLiteral("  x Error - imperfect "),
              failed, true, true};
    case kDownloadFailed:
      return {QStringLiteral("  x Error - failure download "), failed, true, true};
    case kFatal:
      return {QStringLiteral("  x Error - fatal"), failed, true, true};
    case kComplete:
      return {QStringLiteral("  o Complete"), QStringLiteral("o"), false, false};
    case kCancelled:
      return {QStringLiteral("  - Cancel"), QStringLiteral(" "), false, false};
    case kSkipExisting:
      return {QStringLiteral("  - Skip - already existed"), passedOver, false, false};
    case kSkipNone:
      return {QStringLiteral("  ? Skip - None"), QStringLiteral("?"), false, false};
    case kSkip:
      return {QStringLiteral("  - Skip "), passedOver, false, false};
    case kOutOfDiskSpace:
      return {QStringLiteral("  x out of disk space "), passedOver, false, false};
    default:
      return {QStringLiteral("  x Error "), failed, true, true};
  }
}

QString LogTextFor(int code, const ResultReport& report, const QString& address,
                   const QString& folderPrefix) {
  constexpr int kFolderIndent = 38;
  const QString lineEnd = QStringLiteral("\r\n");
  const QString blanks = QStringLiteral("    ");
  QString text = report.text;
  if (report.showsCode) text += QString::number(code);
  switch (code) {
    case kToolNotInstalled:
    case kFolderNotCreated:
      return text + blanks + address + lineEnd + QString(kFolderIndent, QLatin1Char(' ')) +
             folderPrefix + lineEnd + lineEnd;
    case kCancelled:
      return text + blanks + address;
    case kOutOfDiskSpace:
      return text + lineEnd + blanks + address + lineEnd;
    case kSkip:
      return text + lineEnd + blanks + address + lineEnd + lineEnd + lineEnd;
    default:
      return text + lineEnd + blanks + address + lineEnd + lineEnd;
  }
}

}  // namespace zentorin
