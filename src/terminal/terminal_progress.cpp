// SPDX-License-Identifier: MIT
#include "terminal/terminal_progress.h"

#include "app/auto_run.h"
#include "app/workspace.h"
#include "base/number_text.h"
#include "download/result_code.h"
#include "terminal/terminal.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// How often a pipe hears of a countdown and of work that finishes no row.
constexpr int kCountdownStepSeconds = 600;
constexpr int kSignOfLifeMs = 10'000;

}  // namespace

TerminalProgress::TerminalProgress(Workspace& workspace, AutoRun& autoRun, Terminal& terminal,
                                   QObject* parent)
    : QObject(parent), workspace_(workspace), autoRun_(autoRun), terminal_(terminal) {
  connect(&autoRun_, &AutoRun::TitleChanged, this, &TerminalProgress::ShowCountdown);
  connect(&workspace_.urlList, &UrlList::Selected, this, &TerminalProgress::ShowJob);
  connect(&workspace_.driver, &RunDriver::RowFinished, this, &TerminalProgress::ShowRow);
  connect(&workspace_.driver, &RunDriver::PowerAnswered, this, &TerminalProgress::ShowPowerAnswer);
  connect(&workspace_.board, &StatusBoard::Changed, this, &TerminalProgress::ShowStatus);
  connect(&workspace_.board, &StatusBoard::Changed, &throttle_, &ChangeThrottle::Touch);
  connect(&workspace_.board, &StatusBoard::ProgressChanged, this, &TerminalProgress::ShowProgress);
  connect(&throttle_, &ChangeThrottle::Due, this, &TerminalProgress::Draw);
}

void TerminalProgress::Close(ExitStatus status) {
  disconnect(&throttle_, &ChangeThrottle::Due, this, nullptr);
  terminal_.EndRefresh();
  for (const QString& line : tally_.Summary(status)) terminal_.Line(line);
  if (workspace_.log.WasWritten()) {
    terminal_.Line(u"ログ: "_s + workspace_.log.Path());
  }
}

void TerminalProgress::ShowCountdown(const QString& text) {
  if (autoRun_.CurrentPhase() != AutoRun::Phase::Armed) return;
  if (terminal_.IsTerminal()) {
    terminal_.Refresh(text);
    return;
  }
  const int seconds = autoRun_.RemainingSeconds();
  if (announcedSeconds_ >= 0 && announcedSeconds_ - seconds < kCountdownStepSeconds) return;
  announcedSeconds_ = seconds;
  Print(text);
}

void TerminalProgress::ShowJob(int row) {
  if (autoRun_.CurrentPhase() != AutoRun::Phase::Running || row < 0) return;
  lastFault_.clear();
  lastRowText_.clear();
  const TargetUrlItem job = workspace_.urlList.Item(row);
  const bool skipped = job.Flag(TargetUrlItem::Skip);
  if (!skipped) tally_.AddJob();
  Print(u"[%1/%2] "_s.arg(row + 1).arg(workspace_.urlList.Count()) +
        job[TargetUrlItem::Description] +
        (skipped ? u"（一括ダウンロードスキップ）"_s : QString()));
}

void TerminalProgress::ShowRow(const FinishedRow& row) {
  const QString saveFolder =
      workspace_.drives.ToSystemPath(workspace_.job[TargetUrlItem::SavePath]);
  tally_.AddRow(row, saveFolder);
  lastRowText_ = row.text;
  const bool asHoped = row.code == kComplete || row.code == kSkipExisting;
  if (terminal_.IsTerminal() && asHoped) return;
  Print(row.text + u"  "_s + row.address);
}

// A fault that belongs to no row, such as a log that cannot be written, is told as it comes. The
// status line also repeats the last row's.
void TerminalProgress::ShowStatus() {
  const StatusBoard& board = workspace_.board;
  const QString& status = board.Status();
  if (board.StatusColour() != StatusBoard::kRed) {
    lastFault_.clear();  // the next row may fail in the same way
    return;
  }
  if (status == lastFault_) return;
  lastFault_ = status;
  if (!status.isEmpty() && !lastRowText_.startsWith(status)) Print(status);
}

// A refusal is a fault and has been told as one.
void TerminalProgress::ShowPowerAnswer(const QString& text) {
  if (text != lastFault_) Print(text);
}

// The board has held this back as long as it is to be.
void TerminalProgress::ShowProgress() {
  throttle_.Touch();
  throttle_.Flush();
}

void TerminalProgress::Draw() {
  if (autoRun_.CurrentPhase() != AutoRun::Phase::Running) return;
  if (terminal_.IsTerminal()) {
    terminal_.Refresh(WorkText(), BytesText());
  } else if (sinceLine_.isValid() && sinceLine_.hasExpired(kSignOfLifeMs)) {
    Print(WorkText() + BytesText());
  }
}

bool TerminalProgress::IsCrawling() const {
  return workspace_.board.ProgressShown() && workspace_.board.Counter().isEmpty();
}

// What is in hand: a row's status, counter and address; or of a crawl the files found and the page.
QString TerminalProgress::WorkText() const {
  const StatusBoard& board = workspace_.board;
  QStringList parts = {board.Status(), board.Counter(), board.File()};
  if (IsCrawling()) {
    const QString& found = board.FileCount();
    const bool atRoot = board.File().isEmpty();
    parts = {found.isEmpty() ? found : found + u"個"_s,
             atRoot ? workspace_.job[TargetUrlItem::Root] : board.File()};
  }
  parts.removeAll(QString());
  return parts.join(u"  "_s);
}

QString TerminalProgress::BytesText() const {
  const StatusBoard& board = workspace_.board;
  if (!board.ProgressShown() || IsCrawling()) return {};
  return u"  "_s + GroupedNumber(board.FileBytes()) + u" バイト"_s;
}

void TerminalProgress::Print(const QString& line) {
  terminal_.Line(line);
  sinceLine_.start();
}

}  // namespace zentorin
