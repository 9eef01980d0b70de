// SPDX-License-Identifier: MIT
#include "app/run_summary.h"

#include "base/number_text.h"
#include "download/run_outcome.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString EndText(ExitStatus status) {
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

QString SummaryOf(const RunOutcome& outcome) {
  return u"%1: ジョブ %2、ファイル 完了 %3・失敗 %4・スキップ %5、%6 バイト"_s.arg(
      EndText(ExitStatusOf(outcome)), GroupedNumber(outcome.jobs), GroupedNumber(outcome.completed),
      GroupedNumber(outcome.failed), GroupedNumber(outcome.skipped), GroupedNumber(outcome.bytes));
}

}  // namespace zentorin
