// SPDX-License-Identifier: MIT
#include "download/download_run.h"

#include <QFileInfo>
#include <QStorageInfo>

#include "base/display_clock.h"
#include "base/drives.h"
#include "base/file_names.h"
#include "base/message_boxes.h"
#include "base/number_text.h"
#include "base/run_state.h"
#include "base/run_time_error.h"
#include "base/status_board.h"
#include "base/wait.h"
#include "crawl/file_list.h"
#include "download/local_target.h"
#include "download/result_code.h"
#include "download/row_cursor.h"
#include "download/row_download.h"
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

bool IsFatal(int code) {
  return code == kFolderNotCreated || code == kOutOfDiskSpace;
}

QString FatalText(const RowOutcome& outcome) {
  if (outcome.code == kFolderNotCreated) {
    return QString::number(outcome.folderError) + u' ' +
           DescribeRunTimeError(static_cast<RunTimeError>(outcome.folderError)) + LineEnd() +
           LineEnd() + outcome.folderAtFault;
  }
  constexpr qint64 kBytesPerKilobyte = 1024;
  const qint64 free = QStorageInfo(outcome.folder).bytesAvailable();
  const qint64 rounded = (free + kBytesPerKilobyte / 2) / kBytesPerKilobyte;
  return u"空き容量不足です。"_s + LineEnd() + LineEnd() + u"Free Space = "_s +
         GroupedNumber(rounded) + u" kbyte"_s;
}

}  // namespace

DownloadRun::DownloadRun(const DownloadContext& context, QObject* parent)
    : QObject(parent), context_(context) {}

DownloadRun::~DownloadRun() = default;

QCoro::Task<void> DownloadRun::Run() {
  logText_.clear();
  lastStatusText_.clear();
  total_ = counter_ = completed_ = lastResult_ = 0;
  lastRunFailed_ = lastRunWasFatal_ = false;
  context_.board.SetStatus({});
  context_.board.SetSiteEnabled(false);
  if (context_.files.SelectedCount() == 0) {
    if (!context_.state.IsBatch()) co_await TellNothingSelected();
  } else {
    Start();
    co_await WalkRows();
    if (!lastRunWasFatal_) EndOfRun();
  }
  CleanUp();
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
  context_.board.RequestFocus(hasRows ? FocusTarget::FileList : FocusTarget::UrlList);
}

void DownloadRun::Start() {
  context_.state.ClearCancel();
  StatusBoard& board = context_.board;
  board.SetCancelShown(true);
  board.SetCancelEnabled(true);
  board.SetProgressShown(true);
  board.SetProgress(0);

  const JobEditor& job = context_.job;
  RunJob fields;
  fields.savePath = job[TargetUrlItem::SavePath];
  fields.root = ExpandDateTemplates(job[TargetUrlItem::Root], context_.clock.Now());
  fields.rootBase = job.RootBase();
  fields.treeFolder = job.Flag(TargetUrlItem::TreeFolder);
  fields.overWrite = job.Flag(TargetUrlItem::OverWrite);
  root_ = fields.root;
  download_ = std::make_unique<RowDownload>(context_, fields);

  logText_ = u"< "_s + job[TargetUrlItem::Description] + u" >"_s + LineEnd() + LineEnd();
  total_ = context_.files.SelectedCount();
}

QCoro::Task<void> DownloadRun::WalkRows() {
  RowCursor rows(context_.files);
  for (int index = rows.Next(); index >= 0; index = rows.Next()) {
    const bool goesOn = co_await TakeRow(rows, index);
    if (!goesOn) co_return;
    co_await YieldToEventLoop();
    if (context_.state.CancelRequested()) co_return;
  }
}

// False when the run ends with this row.
QCoro::Task<bool> DownloadRun::TakeRow(RowCursor& rows, int index) {
  StatusBoard& board = context_.board;
  FileList& files = context_.files;
  files.SetCurrentRow(index);
  board.SetStatus(u"ダウンロード中"_s);
  FileListRow row = files.Row(index);
  const QString address = RowAddress(row, root_);
  ++counter_;
  board.SetCounter(QString::number(counter_) + u'/' + QString::number(total_));
  // An address without "/" leads nowhere: it is counted and leaves no trace.
  if (address.contains(u'/')) {
    board.SetFileBytes(0);
    board.SetFile(CutForDisplay(address));
    QCoro::Task<RowOutcome> fetch = download_->Fetch(address, row[FileListRow::Date]);
    const int next = rows.Peek();
    if (next >= 0) download_->Prepare(RowAddress(files.Row(next), root_));
    const RowOutcome outcome = co_await fetch;
    const int place = rows.Find(row);
    row.Set(FileListRow::Date, outcome.date);
    row.Set(FileListRow::Mark, ReportFor(outcome.code, false).mark);
    if (place >= 0) files.SetRow(place, row);
    const bool goesOn = Report(outcome, address);
    if (IsFatal(outcome.code)) co_await TellFatal(outcome);
    if (!goesOn) co_return false;
  }
  board.SetProgress(static_cast<double>(counter_) / total_);
  if (const int place = rows.Find(row); place >= 0) files.SetSelected(place, false);
  co_return true;
}

// Log, flags and status line. False when the run ends with this result.
bool DownloadRun::Report(const RowOutcome& outcome, const QString& address) {
  const ResultReport report = ReportFor(outcome.code, context_.state.CancelRequested());
  logText_ += LogTextFor(outcome.code, report, CutForDisplay(address), outcome.folderPrefix,
                         CutForDisplay(outcome.reason));
  lastResult_ = outcome.code;
  lastStatusText_ = report.text;
  if (outcome.code == kComplete) ++completed_;
  if (report.setsErrorFlag) {
    context_.state.SetErrorFlag(true);
    lastRunFailed_ = true;
  }
  if (outcome.code == kSkipExisting) context_.board.SetStatus(u"alreay exist"_s);
  if (outcome.code == kCancelled) context_.board.SetStatus(u"Cancel"_s);
  const bool complete = outcome.code == kComplete;
  const qint64 bytes = complete ? QFileInfo(outcome.path).size() : 0;
  Q_EMIT RowFinished({.code = outcome.code,
                      .text = TextWithCode(outcome.code, report),
                      .address = CutForDisplay(address),
                      .path = outcome.path,
                      .bytes = bytes});
  return outcome.code != kCancelled && !IsFatal(outcome.code);
}

QCoro::Task<void> DownloadRun::TellFatal(RowOutcome outcome) {
  lastRunFailed_ = lastRunWasFatal_ = true;
  MessageBox box = MessageBox::Error(FatalText(outcome));
  box.title = u"続行不可エラー発生"_s;
  co_await context_.messages.Ask(box);
  context_.state.RequestCancel();
}

void DownloadRun::EndOfRun() {
  if (lastResult_ == kComplete) {
    context_.board.SetStatus(u"ダウンロード完了"_s, StatusBoard::kBlue);
  } else if (lastResult_ < 0) {
    context_.board.SetStatus(lastStatusText_, StatusBoard::kRed);
  }
  if (!context_.state.IsBatch() && completed_ > 0 && context_.options.openFolder) {
    context_.opener.OpenFolder(context_.drives.ToSystemPath(context_.job[TargetUrlItem::SavePath]));
  }
}

void DownloadRun::CleanUp() {
  StatusBoard& board = context_.board;
  board.SetSiteEnabled(true);
  board.SetCounter({});
  board.SetProgressShown(false);
  board.SetProgress(0);
  board.SetDone(u"0"_s);
  board.SetFileBytes(0);
  download_.reset();
  // A run whose last row was not recorded (-2) leaves no entry: this program's rule.
  if (lastResult_ == kDownloadFailed) return;
  const FileOutcome logged = context_.log.Append(logText_);
  if (logged.Ok()) return;
  lastRunFailed_ = true;
  context_.state.SetErrorFlag(true);
  if (!lastRunWasFatal_) board.SetStatus(logged.message, StatusBoard::kRed);
}

}  // namespace zentorin
