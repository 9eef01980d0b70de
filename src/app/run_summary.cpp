// SPDX-License-Identifier: MIT
#include "app/run_summary.h"

#include "base/file_names.h"
#include "base/number_text.h"
#include "download/run_outcome.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// So many jobs are named.
constexpr qsizetype kNamedJobs = 5;

QString MissedText(const MissCounts& missing) {
  const QString counts = missing.Text();
  return counts.isEmpty() ? counts : u"（%1）"_s.arg(counts);
}

QString RootsText(const QStringList& jobs) {
  if (jobs.isEmpty()) return {};
  QStringList named = jobs.first(qMin(jobs.size(), kNamedJobs));
  for (QString& job : named) job = u'「' + CutForDisplay(job) + u'」';
  QString text = u"\nルートURLが見つからないジョブ: "_s + named.join(QString());
  if (jobs.size() > kNamedJobs) text += u" ほか %1 件"_s.arg(jobs.size() - kNamedJobs);
  return text;
}

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
  const QString counts = u"%1: ジョブ %2、ファイル 完了 %3・失敗 %4・スキップ %5、%6 バイト"_s.arg(
      EndText(ExitStatusOf(outcome)), GroupedNumber(outcome.jobs), GroupedNumber(outcome.completed),
      GroupedNumber(outcome.failed), GroupedNumber(outcome.skipped), GroupedNumber(outcome.bytes));
  return counts + MissedText(outcome.missing) + RootsText(outcome.rootsMissing);
}

}  // namespace zentorin
