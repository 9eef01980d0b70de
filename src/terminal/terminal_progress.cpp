// SPDX-License-Identifier: MIT
#include "terminal/terminal_progress.h"

#include "app/auto_run.h"
#include "app/run_summary.h"
#include "app/workspace.h"
#include "base/number_text.h"
#include "terminal/terminal.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// How often a pipe hears of a countdown and of work that finishes no row.
constexpr int kCountdownStepSeconds = 600;
constexpr int kSignOfLifeMs = 10'000;
// So many folders are named at the end.
constexpr qsizetype kShownFolders = 10;

}  // namespace

TerminalProgress::TerminalProgress(Workspace& workspace, AutoRun& autoRun, Terminal& terminal,
                                   QObject* parent)
    : QObject(parent), workspace_(workspace), autoRun_(autoRun), terminal_(terminal) {
  connect(&autoRun_, &AutoRun::TitleChanged, this, &TerminalProgress::ShowCountdown);
  connect(&workspace_.driver, &RunDriver::RowFinished, this, &TerminalProgress::ShowRow);
  connect(&workspace_.driver, &RunDriver::PowerAnswered, this, &TerminalProgress::ShowPowerAnswer);
  connect(&workspace_.activity, &Activity::Changed, this, &TerminalProgress::ShowChange);
}

void TerminalProgress::Close(const RunOutcome& outcome) {
  disconnect(&workspace_.activity, nullptr, this, nullptr);
  terminal_.EndRefresh();
  const QStringList summary = SummaryOf(outcome).split(u'\n');
  for (const QString& line : summary) terminal_.Line(line);
  for (const QString& folder : folders_.first(qMin(folders_.size(), kShownFolders))) {
    terminal_.Line(u"保存先: "_s + folder);
  }
  if (folders_.size() > kShownFolders) {
    terminal_.Line(u"ほか %1 フォルダ"_s.arg(folders_.size() - kShownFolders));
  }
  if (workspace_.log.WasWritten()) terminal_.Line(u"ログ: "_s + workspace_.log.Path());
}

void TerminalProgress::ShowCountdown(const QString& text) {
  if (autoRun_.CurrentState() != AutoRun::State::Armed) return;
  if (terminal_.IsTerminal()) {
    terminal_.Refresh(text);
    return;
  }
  const int seconds = autoRun_.RemainingSeconds();
  if (announcedSeconds_ >= 0 && announcedSeconds_ - seconds < kCountdownStepSeconds) return;
  announcedSeconds_ = seconds;
  Print(text);
}

void TerminalProgress::ShowChange() {
  if (autoRun_.CurrentState() != AutoRun::State::Running) return;
  const ActivityState& now = workspace_.activity.Now();
  if (now.job.number != shownJob_) ShowJob(now.job);
  ShowMessage();
  Draw();
}

void TerminalProgress::ShowJob(Place job) {
  shownJob_ = job.number;
  if (job.count == 0) return;
  lastRowText_.clear();
  const TargetUrlItem item = workspace_.urlList.Item(job.number - 1);
  const bool skipped = item.Flag(TargetUrlItem::Skip);
  Print(u"[%1/%2] "_s.arg(job.number).arg(job.count) + item[TargetUrlItem::Description] +
        (skipped ? u"（一括ダウンロードスキップ）"_s : QString()));
}

void TerminalProgress::ShowRow(const FinishedRow& row) {
  if (row.outcome.code == RowCode::Complete) {
    const QString folder = workspace_.drives.ToSystemPath(workspace_.job[TargetUrlItem::SavePath]);
    if (!knownFolders_.contains(folder)) {
      knownFolders_.insert(folder);
      folders_.append(folder);
    }
  }
  lastRowText_ = row.text;
  const QString& reason = row.outcome.reason.text;
  const bool asHoped =
      row.outcome.code == RowCode::Complete || row.outcome.code == RowCode::SkipExisting;
  if (terminal_.IsTerminal() && asHoped && reason.isEmpty()) return;
  Print(row.text + u"  "_s + row.address + (reason.isEmpty() ? reason : u"  （%1）"_s.arg(reason)));
}

// A fault that belongs to no row, such as a log that cannot be written, is told as it comes. The
// message also repeats the last row's.
void TerminalProgress::ShowMessage() {
  const ActivityState& now = workspace_.activity.Now();
  if (now.message.tone != Tone::Fault || now.said == shownMessage_) return;
  shownMessage_ = now.said;
  if (!lastRowText_.startsWith(now.message.text)) Print(now.message.text);
}

// A refusal is a fault and has been told as one.
void TerminalProgress::ShowPowerAnswer(const QString& text) {
  if (workspace_.activity.Now().message.tone != Tone::Fault) Print(text);
}

void TerminalProgress::Draw() {
  if (terminal_.IsTerminal()) {
    terminal_.Refresh(WorkText(), BytesText());
  } else if (sinceLine_.isValid() && sinceLine_.hasExpired(kSignOfLifeMs)) {
    Print(WorkText() + BytesText());
  }
}

// What is in hand: a row's message, counter and address; of a crawl the files found and the page.
QString TerminalProgress::WorkText() const {
  const ActivityState& now = workspace_.activity.Now();
  QStringList parts;
  switch (now.phase) {
    case Phase::Listing:
      if (now.found > 0) parts += u"%1個"_s.arg(now.found);
      parts += now.address.isEmpty() ? workspace_.job[TargetUrlItem::Root] : now.address;
      break;
    case Phase::CountingDown:
      parts = {now.message.text, SecondsText(now.left)};
      break;
    default:
      parts += now.message.text;
      if (now.row.count > 0) parts += u"%1/%2"_s.arg(now.row.number).arg(now.row.count);
      parts += now.address;
  }
  parts += now.waiting;
  parts.removeAll(QString());
  return parts.join(u"  "_s);
}

QString TerminalProgress::BytesText() const {
  const ActivityState& now = workspace_.activity.Now();
  const bool onRow = now.phase == Phase::Downloading || now.phase == Phase::Recording;
  if (!onRow || now.row.count == 0) return {};
  return u"  "_s + GroupedNumber(now.bytes) + u" バイト"_s;
}

void TerminalProgress::Print(const QString& line) {
  terminal_.Line(line);
  sinceLine_.start();
}

}  // namespace zentorin
