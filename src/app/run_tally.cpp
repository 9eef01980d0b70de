// SPDX-License-Identifier: MIT
#include "app/run_tally.h"

#include "base/number_text.h"
#include "download/finished_row.h"
#include "download/result_code.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kShownFolders = 10;

QString OutcomeText(ExitStatus status) {
  switch (status) {
    case kExitDone:
      return u"処理終了"_s;
    case kExitCancelled:
      return u"中止"_s;
    case kExitRefused:
    case kExitFailures:
      break;
  }
  return u"異常終了"_s;
}

}  // namespace

void RunTally::AddRow(const FinishedRow& row, const QString& saveFolder) {
  switch (row.code) {
    case kComplete:
      ++completed_;
      bytes_ += row.bytes;
      if (!knownFolders_.contains(saveFolder)) {
        knownFolders_.insert(saveFolder);
        folders_.append(saveFolder);
      }
      break;
    case kCancelled:
      break;
    case kSkipExisting:
    case kSkipNone:
    case kSkip:
      ++skipped_;
      break;
    default:
      ++failed_;
  }
}

QStringList RunTally::Summary(ExitStatus status) const {
  QStringList lines = {u"%1: ジョブ %2、ファイル 完了 %3・失敗 %4・スキップ %5、%6 バイト"_s.arg(
      OutcomeText(status), GroupedNumber(jobs_), GroupedNumber(completed_), GroupedNumber(failed_),
      GroupedNumber(skipped_), GroupedNumber(bytes_))};
  for (const QString& folder : folders_.first(qMin(folders_.size(), kShownFolders))) {
    lines.append(u"保存先: "_s + folder);
  }
  if (folders_.size() > kShownFolders) {
    lines.append(u"ほか %1 フォルダ"_s.arg(folders_.size() - kShownFolders));
  }
  return lines;
}

}  // namespace zentorin
