// SPDX-License-Identifier: MIT
#include "download/row_code.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

RowReport Failed(const QString& text, bool setsErrorFlag = true) {
  return {.text = text, .mark = u"x"_s, .showsCode = true, .setsErrorFlag = setsErrorFlag};
}

RowReport Passed(const QString& text, const QString& mark) {
  return {.text = text, .mark = mark, .showsCode = false, .setsErrorFlag = false};
}

}  // namespace

RowReport ReportFor(RowCode code, bool cancelled) {
  const QString skipped = u"-"_s;
  switch (code.Number()) {
    case RowCode::ToolNotInstalled:
      return Failed(u"  x Error - VLC not installed "_s);
    case RowCode::FolderNotCreated:
      return Failed(u"  x Error - failure to create folder "_s, false);
    case RowCode::Imperfect:
      return Failed(cancelled ? u"  x Cancel - imperfect "_s : u"  x Error - imperfect "_s);
    case RowCode::DownloadFailed:
      return Failed(u"  x Error - failure download "_s);
    case RowCode::Fatal:
      return Failed(u"  x Error - fatal"_s);
    case RowCode::Complete:
      return Passed(u"  o Complete"_s, u"o"_s);
    case RowCode::Cancelled:
      return Passed(u"  - Cancel"_s, u" "_s);
    case RowCode::SkipExisting:
      return Passed(u"  - Skip - already existed"_s, skipped);
    case RowCode::SkipNone:
      return Passed(u"  ? Skip - None"_s, u"?"_s);
    case RowCode::Skip:
      return Passed(u"  - Skip "_s, skipped);
    case RowCode::OutOfDiskSpace:
      return Passed(u"  x out of disk space "_s, skipped);
    default:
      return Failed(u"  x Error "_s);
  }
}

QString TextWithCode(RowCode code, const RowReport& report) {
  return report.showsCode ? report.text + QString::number(code.Number()) : report.text;
}

QString LogTextFor(RowCode code, const RowReport& report, const QString& address,
                   const QString& folderPrefix, const QString& reason) {
  constexpr int kFolderIndent = 38;
  const QString lineEnd = u"\r\n"_s;
  const QString blanks = u"    "_s;
  const QString text = TextWithCode(code, report);
  switch (code.Number()) {
    case RowCode::ToolNotInstalled:
    case RowCode::FolderNotCreated:
      return text + blanks + address + lineEnd + QString(kFolderIndent, u' ') + folderPrefix +
             lineEnd + lineEnd;
    case RowCode::Cancelled:
      return text + blanks + address;
    case RowCode::OutOfDiskSpace:
      return text + lineEnd + blanks + address + lineEnd;
    case RowCode::Skip:
      return text + lineEnd + blanks + address + lineEnd + lineEnd + lineEnd;
    default:
      return text + lineEnd + blanks + address + lineEnd +
             (reason.isEmpty() ? reason : blanks + reason + lineEnd) + lineEnd;
  }
}

}  // namespace zentorin
