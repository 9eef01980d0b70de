// SPDX-License-Identifier: MIT
#include "download/download_run.h"

#include <QFileInfo>
#include <QStorageInfo>

#include "base/display_clock.h"
#include "base/drives.h"
#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/number_text.h"
#include "crawl/file_list.h"
#include "download/local_target.h"
#include "download/row_cursor.h"
#include "jobs/date_template.h"
#include "jobs/job_editor.h"
#include "jobs/log_file.h"
#include "launch/opener.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString& LineEnd() {
  static const QString lineEnd = u"\r\n"_s;
  return lineEnd;
}

QString NotAnAddress() {
  return u"http または https のアドレスではありません"_s;
}

QString FatalText(const RowOutcome& row) {
  if (row.code == RowCode::FolderNotCreated) {
    return row.folderOutcome.NumberAndMessage() + LineEnd() + LineEnd() + row.folderOutcome.subject;
  }
  constexpr qint64 kBytesPerKilobyte = 1024;
  const qint64 free = QStorageInfo(row.folder).bytesAvailable();
  const qint64 rounded = (free + kBytesPerKilobyte / 2) / kBytesPerKilobyte;
  return u"空き容量不足です。"_s + LineEnd() + LineEnd() + u"Free Space = "_s +
         GroupedNumber(rounded) + u" kbyte"_s;
}

}  // namespace

DownloadRun::DownloadRun(const DownloadContext& context, Mode mode, CancelToken cancel,
                         RowFinished rowFinished)
    : context_(context),
      mode_(mode),
      cancel_(std::move(cancel)),
      rowFinished_(std::move(rowFinished)) {}

QCoro::Task<RunOutcome> DownloadRun::Run() {
  context_.activity.Say({});
  if (context_.files.SelectedCount() == 0) {
    outcome_.nothingSelected = true;
    if (mode_ == Mode::Single) co_await TellNothingSelected();
  } else {
    Start();
    co_await WalkRows();
    if (!outcome_.fatal) EndOfRun();
  }
  CleanUp();
  outcome_.cancelled = cancel_.Cancelled();
  co_return outcome_;
}

QCoro::Task<void> DownloadRun::TellNothingSelected() {
  const bool hasRows = context_.files.Count() > 0;
  MessageBox box;
  box.title = u"未選択"_s;
  box.text = hasRows ? u"ファイルリストが選択されていません！"_s + LineEnd() + LineEnd() +
                           u"ファイルを選択後に再度実行して下さい。"_s
                     : u"ファイルリスト作成されていません！"_s + LineEnd() + LineEnd() +
                           u"[URLリスト]項目を選択⇒[ファイルリスト生成]⇒ファイル選択　後に"
                           "再度実行して下さい。"_s;
  co_await context_.messages.Ask(box);
}

void DownloadRun::Start() {
  const JobEditor& job = context_.job;
  RunJob fields;
  fields.savePath = job[TargetUrlItem::SavePath];
  fields.root = ExpandedRoot(job.Fields(), context_.clock.Now());
  fields.rootBase = job.RootBase();
  fields.treeFolder = job.Flag(TargetUrlItem::TreeFolder);
  fields.overWrite = job.Flag(TargetUrlItem::OverWrite);
  root_ = fields.root;
  download_ = std::make_unique<RowDownload>(context_, fields, cancel_);

  logText_ = u"< "_s + job[TargetUrlItem::Description] + u" >"_s + LineEnd() + LineEnd();
  place_.count = context_.files.SelectedCount();
  context_.activity.SetShare(0);
}

QCoro::Task<void> DownloadRun::WalkRows() {
  RowCursor rows(context_.files);
  for (int index = rows.Next(); index >= 0; index = rows.Next()) {
    const bool goesOn = co_await TakeRow(rows, index);
    if (!goesOn) co_return;
    if (slice_.Over()) co_await slice_.Rest();
    if (cancel_.Cancelled()) co_return;
  }
}

// False when the run ends with this row.
QCoro::Task<bool> DownloadRun::TakeRow(RowCursor& rows, int index) {
  Activity& activity = context_.activity;
  FileList& files = context_.files;
  files.SetCurrentRow(index);
  activity.Say(u"ダウンロード中"_s);
  FileListRow row = files.Row(index);
  const QString address = RowAddress(row, root_);
  ++place_.number;
  activity.SetRow(place_);
  files.SetReason(index, {});
  // An address without "/" leads nowhere.
  if (address.contains(u'/')) {
    activity.SetBytes(0);
    activity.SetAddress(CutForDisplay(address));
    QCoro::Task<RowOutcome> fetch = download_->Fetch(address, row[FileListRow::Date]);
    AskAhead(rows);
    const RowOutcome outcome = co_await fetch;
    const int place = rows.Find(row);
    row.Set(FileListRow::Date, outcome.date);
    row.Set(FileListRow::Mark, ReportFor(outcome.code, false).mark);
    if (place >= 0) {
      files.SetRow(place, row);
      files.SetReason(place, outcome.reason.text);
    }
    const bool goesOn = Report(outcome, address);
    if (outcome.code.IsFatal()) co_await TellFatal(outcome);
    if (!goesOn) co_return false;
  } else {
    PassOver(index, address);
  }
  activity.SetShare(static_cast<double>(place_.number) / place_.count);
  if (const int place = rows.Find(row); place >= 0) files.SetSelected(place, false);
  co_return true;
}

// Sends requests of the rows to come, as far as more of them can wait for their turn.
void DownloadRun::AskAhead(RowCursor& rows) {
  constexpr int kLooks = 50;
  for (int look = 0; look < kLooks; ++look) {
    const int next = rows.NextAhead();
    if (next < 0) return;
    const FileListRow& row = context_.files.Row(next);
    if (download_->AskEarly(RowAddress(row, root_), row[FileListRow::Date])) continue;
    rows.StepBack();
    return;
  }
}

// A row that leads nowhere has neither mark nor message nor log line, but a reason.
void DownloadRun::PassOver(int index, const QString& address) {
  FinishedRow row;
  row.address = CutForDisplay(address);
  row.outcome.code = RowCode::Skip;
  row.outcome.reason = {MissKind::Other, NotAnAddress()};
  context_.files.SetReason(index, row.outcome.reason.text);
  outcome_.Add(row.outcome.reason);
  rowFinished_(row);
}

// Log, counts and message. False when the run ends with this result.
bool DownloadRun::Report(const RowOutcome& row, const QString& address) {
  const RowReport report = ReportFor(row.code, cancel_.Cancelled());
  const QString shownAddress = CutForDisplay(address);
  // The other codes say by themselves what happened.
  const QString reason = row.code == RowCode::Fatal ? CutForDisplay(row.reason.text) : QString();
  logText_ += LogTextFor(row.code, report, shownAddress, row.folderPrefix, reason);
  lastCode_ = row.code;
  lastStatusText_ = report.text;
  outcome_.Add(row);
  outcome_.errorFlag |= report.setsErrorFlag;
  if (row.code == RowCode::SkipExisting) context_.activity.Say(u"alreay exist"_s);
  if (row.code == RowCode::Cancelled) context_.activity.Say(u"Cancel"_s);
  rowFinished_({.outcome = row, .text = TextWithCode(row.code, report), .address = shownAddress});
  return row.code != RowCode::Cancelled && !row.code.IsFatal();
}

QCoro::Task<void> DownloadRun::TellFatal(RowOutcome row) {
  outcome_.fatal = true;
  MessageBox box = MessageBox::Error(FatalText(row));
  box.title = u"続行不可エラー発生"_s;
  co_await context_.messages.Ask(box);
}

void DownloadRun::EndOfRun() {
  if (lastCode_ == RowCode::Complete) {
    context_.activity.Say(u"ダウンロード完了"_s, Tone::Good);
  } else if (lastCode_.Number() < 0) {
    context_.activity.Say(lastStatusText_, Tone::Fault);
  }
  if (mode_ == Mode::Single && outcome_.completed > 0 && context_.options.openFolder) {
    context_.opener.OpenFolder(context_.drives.ToSystemPath(context_.job[TargetUrlItem::SavePath]));
  }
}

void DownloadRun::CleanUp() {
  context_.activity.SetRow({});
  context_.activity.SetShare(0);
  context_.activity.SetBytes(0);
  download_.reset();
  // A run whose last row was not recorded (-2) leaves no entry: this program's rule.
  if (lastCode_ == RowCode::DownloadFailed) return;
  const Outcome logged = context_.log.Append(logText_);
  if (logged.Ok()) return;
  outcome_.anyFailure = outcome_.errorFlag = true;
  if (!outcome_.fatal) context_.activity.Say(logged.message, Tone::Fault);
}

}  // namespace zentorin
