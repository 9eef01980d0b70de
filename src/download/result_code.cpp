// SPDX-License-Identifier: MIT
#include "download/result_code.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

ResultReport Failed(const QString& text, bool setsErrorFlag = true) {
  return {.text = text, .mark = u"x"_s, .showsCode = true, .setsErrorFlag = setsErrorFlag};
}

ResultReport Passed(const QString& text, const QString& mark) {
  return {.text = text, .mark = mark, .showsCode = false, .setsErrorFlag = false};
}

}  // namespace

ResultReport ReportFor(int code, bool cancelRequested) {
  const QString skipped = u"-"_s;
  switch (code) {
    case kToolNotInstalled:
      return Failed(u"  x Error - VLC not installed "_s);
    case kFolderNotCreated:
      return Failed(u"  x Error - failure to create folder "_s, false);
    case kImperfect:
      return Failed(cancelRequested ? u"  x Cancel - imperfect "_s : u"  x Error - imperfect "_s);
    case kDownloadFailed:
      return Failed(u"  x Error - failure download "_s);
    case kFatal:
      return Failed(u"  x Error - fatal"_s);
    case kComplete:
      return Passed(u"  o Complete"_s, u"o"_s);
    case kCancelled:
      return Passed(u"  - Cancel"_s, u" "_s);
    case kSkipExisting:
      return Passed(u"  - Skip - already existed"_s, skipped);
    case kSkipNone:
      return Passed(u"  ? Skip - None"_s, u"?"_s);
    case kSkip:
      return Passed(u"  - Skip "_s, skipped);
    case kOutOfDiskSpace:
      return Passed(u"  x out of disk space "_s, skipped);
    default:
      return Failed(u"  x Error "_s);
  }
}

QString TextWithCode(int code, const ResultReport& report) {
  return report.showsCode ? report.text + QString::number(code) : report.text;
}

QString LogTextFor(int code, const ResultReport& report, const QString& address,
                   const QString& folderPrefix, const QString& reason) {
  constexpr int kFolderIndent = 38;
  const QString lineEnd = u"\r\n"_s;
  const QString blanks = u"    "_s;
  const QString text = TextWithCode(code, report);
  switch (code) {
    case kToolNotInstalled:
    case kFolderNotCreated:
      return text + blanks + address + lineEnd + QString(kFolderIndent, u' ') + folderPrefix +
             lineEnd + lineEnd;
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
