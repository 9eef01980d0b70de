// SPDX-License-Identifier: MIT
#include "app/run_tally.h"

#include "base/number_text.h"
#include "download/finished_row.h"
#include "download/result_code.h"

namespace zentorin {
namespace {

constexpr qsizetype kShownFolders = 10;

QString OutcomeText(ExitStatus status) {
  switch (status) {
    case kExitDone:
      return QStringLiteral("処理終了");
    case kExitCancelled:
      return QStringLiteral("中止");
    case kExitRefused:
    case kExitFailures:
      break;
  }
  return QStringLiteral("異常終了");
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
  QStringList lines = {
      QStringLiteral("%1: ジョブ %2、ファイル 完了 %3・失敗 %4・スキップ %5、%6 バイト")
          .arg(OutcomeText(status), GroupedNumber(jobs_), GroupedNumber(completed_),
               GroupedNumber(failed_), GroupedNumber(skipped_), GroupedNumber(bytes_))};
  for (const QString& folder : folders_.first(qMin(folders_.size(), kShownFolders))) {
    lines.append(QStringLiteral("保存先: ") + folder);
  }
  if (folders_.size() > kShownFolders) {
    lines.append(QStringLiteral("ほか %1 フォルダ").arg(folders_.size() - kShownFolders));
  }
  return lines;
}

}  // namespace zentorin
