// SPDX-License-Identifier: MIT
#include "download/result_code.h"

namespace zentorin {

namespace {

ResultReport Failed(const QString& text, bool setsErrorFlag = true) {
  return {
      .text = text, .mark = QStringLiteral("x"), .showsCode = true, .setsErrorFlag = setsErrorFlag};
}

ResultReport Passed(const QString& text, const QString& mark) {
  return {.text = text, .mark = mark, .showsCode = false, .setsErrorFlag = false};
}

}  // namespace

ResultReport ReportFor(int code, bool cancelRequested) {
  const QString skipped = QStringLiteral("-");
  switch (code) {
    case kToolNotInstalled:
      return Failed(QStringLiteral("  x Error - VLC not installed "));
    case kFolderNotCreated:
      return Failed(QStringLiteral("  x Error - failure to create folder "), false);
    case kImperfect:
      return Failed(cancelRequested ? QStringLiteral("  x Cancel - imperfect ")
                                    : QStringLiteral("  x Error - imperfect "));
    case kDownloadFailed:
      return Failed(QStringLiteral("  x Error - failure download "));
    case kFatal:
      return Failed(QStringLiteral("  x Error - fatal"));
    case kComplete:
      return Passed(QStringLiteral("  o Complete"), QStringLiteral("o"));
    case kCancelled:
      return Passed(QStringLiteral("  - Cancel"), QStringLiteral(" "));
    case kSkipExisting:
      return Passed(QStringLiteral("  - Skip - already existed"), skipped);
    case kSkipNone:
      return Passed(QStringLiteral("  ? Skip - None"), QStringLiteral("?"));
    case kSkip:
      return Passed(QStringLiteral("  - Skip "), skipped);
    case kOutOfDiskSpace:
      return Passed(QStringLiteral("  x out of disk space "), skipped);
    default:
      return Failed(QStringLiteral("  x Error "));
  }
}

QString TextWithCode(int code, const ResultReport& report) {
  return report.showsCode ? report.text + QString::number(code) : report.text;
}

QString LogTextFor(int code, const ResultReport& report, const QString& address,
                   const QString& folderPrefix, const QString& reason) {
  constexpr int kFolderIndent = 38;
  const QString lineEnd = QStringLiteral("\r\n");
  const QString blanks = QStringLiteral("    ");
  const QString text = TextWithCode(code, report);
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
      return text + lineEnd + blanks + address + lineEnd +
             (reason.isEmpty() ? reason : blanks + reason + lineEnd) + lineEnd;
  }
}

}  // namespace zentorin
