// SPDX-License-Identifier: MIT
#include "download/row_download.h"

#include <QFileInfo>
#include <utility>

#include "base/display_clock.h"
#include "base/drives.h"
#include "base/run_state.h"
#include "base/run_time_error.h"
#include "base/status_board.h"
#include "download/local_target.h"
#include "download/result_code.h"
#include "download/stream_capture.h"
#include "jobs/date_format.h"
#include "jobs/date_text.h"
#include "net/api_web.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMayWrite = 0;

QString WithSeparator(const QString& folder) {
  return folder.endsWith(u'\\') ? folder : folder + u'\\';
}

// The local folder in the program's own form, with its separator.
QString FolderPrefix(const QString& savePath, QString subFolder) {
  QString prefix = WithSeparator(savePath);
  if (subFolder.isEmpty()) return prefix;
  return WithSeparator(prefix + subFolder.replace(u'/', u'\\'));
}

bool FileExists(const QString& path) {
  const QFileInfo file(path);
  return file.exists() && !file.isDir();
}

}  // namespace

// Shows a file's progress on the board.
class RowDownload::BoardProgress : public DownloadProgress {
 public:
  explicit BoardProgress(StatusBoard& board) : board_(board) {}
  void SetCaption(const QString& fraction) override { board_.SetDone(fraction); }
  void SetBytes(qint64 written) override { board_.SetFileBytes(written); }

 private:
  StatusBoard& board_;
};

RowDownload::RowDownload(const DownloadContext& context, RunJob job)
    : context_(context),
      job_(std::move(job)),
      saveFolder_(context.drives.ToSystemPath(job_.savePath), context.drives.ProgramFolder()),
      download_(context.engine, context.http, context.state),
      progress_(std::make_unique<BoardProgress>(context.board)) {}

RowDownload::~RowDownload() = default;

QCoro::Task<RowOutcome> RowDownload::Fetch(QString address, QString date) {
  RowOutcome outcome;
  outcome.date = date;
  const QString subFolder =
      job_.treeFolder ? TreeFolder(address, job_.rootBase, job_.root) : QString();
  outcome.folderPrefix = FolderPrefix(job_.savePath, subFolder);
  const SaveFolder::Made made = saveFolder_.Make(subFolder);
  if (made.error != 0) {
    outcome.code = made.refused ? made.error : static_cast<int>(kFolderNotCreated);
    outcome.folderError = made.error;
    outcome.folderAtFault = made.path;
    co_return outcome;
  }
  outcome.folder = made.path;
  if (IsStreamSuffix(SuffixOf(address))) {
    outcome.code = co_await CaptureStream(address, outcome);
  } else {
    outcome.code = co_await FetchFile(address, outcome);
  }
  co_return outcome;
}

void RowDownload::Prepare(const QString& address) {
  if (context_.options.addDate || IsStreamSuffix(SuffixOf(address))) return;
  const QString name = LocalName({}, address);
  if (name.isEmpty()) return;
  QString folder = saveFolder_.Path();
  if (job_.treeFolder) {
    folder += u'/' + TreeFolder(address, job_.rootBase, job_.root).replace(u'\\', u'/');
  }
  if (job_.overWrite || !FileExists(folder + u'/' + name)) download_.Prepare(address);
}

QCoro::Task<int> RowDownload::FetchFile(QString address, RowOutcome& outcome) {
  const QString prefix = co_await DatePrefix(address, outcome.date);
  // Without its prefix the name may be that of another file, which no cancel may delete.
  if (context_.state.CancelRequested()) co_return kCancelled;
  const QString name = LocalName(prefix, address);
  if (name.isEmpty()) co_return static_cast<int>(RunTimeError::BadFileName);
  const QString path = outcome.folder + u'/' + name;
  outcome.path = path;
  const int refused = MayWrite(path);
  if (refused != kMayWrite) co_return refused;

  int code = co_await download_.DownloadToFile(address, path, progress_.get());
  if (code == kFatal) code = kSkipNone;
  // A partial or stale file must not remain: after a cancel the file that was to be written over is
  // deleted too, this program's rule. One that could not be opened is left alone.
  const bool broken = context_.state.CancelRequested() || code >= kFirstRunTimeError;
  if (broken && !download_.FileRefused()) DeleteLocalFile(path);
  co_return code;
}

// kMayWrite, or the result of the row.
int RowDownload::MayWrite(const QString& path) const {
  if (!job_.overWrite && FileExists(path)) return kSkipExisting;
  return saveFolder_.Forbids(path);
}

QCoro::Task<int> RowDownload::CaptureStream(QString address, RowOutcome& outcome) {
  QString stream = address;
  if (SuffixOf(address) == ".asx"_L1) {
    const FetchedPage page = co_await context_.http.FetchPageText(address);
    if (context_.state.CancelRequested()) co_return kCancelled;
    stream = page.status == 0 ? API_Web::StreamLink(page.text) : QString();
    if (stream.isEmpty()) {
      context_.board.SetStatus(u"ＵＲＬ無効"_s, StatusBoard::kRed);
      co_return kSkipNone;
    }
  }
  QString name = LocalName({}, stream);
  if (name.isEmpty()) co_return static_cast<int>(RunTimeError::BadFileName);
  // Whichever program records: this program's rule. StreamGet does not convert, so its sound is
  // missed under this name.
  if (context_.options.wmaToMp3) name = WithMp3Suffix(name);
  const QString path = outcome.folder + u'/' + name;
  outcome.path = path;
  const int refused = MayWrite(path);
  if (refused != kMayWrite) co_return refused;
  // Nothing but a regular file is written over.
  const QFileInfo old(path);
  if (old.isSymLink() || (old.exists() && !old.isFile())) {
    co_return static_cast<int>(RunTimeError::PathAccess);
  }
  const int code = co_await context_.capture.Capture(context_, address, path);
  // The other codes say by themselves what happened.
  if (code == kFatal && context_.board.StatusColour() == StatusBoard::kRed) {
    outcome.reason = context_.board.Status();
  }
  // As with plain files, also one that was to be written over.
  if (context_.state.CancelRequested()) DeleteLocalFile(path);
  co_return code;
}

// Empty when none is wanted and when no date is known. A date that the row lacks is asked for, in
// the time that the file list shows.
QCoro::Task<QString> RowDownload::DatePrefix(QString address, QString& date) {
  const QString& format = context_.options.addDateFormat;
  if (!context_.options.addDate || format.isEmpty()) co_return QString();
  if (date.isEmpty() || date == "-"_L1) {
    const QString header =
        co_await context_.http.QueryHeader(address, HeaderSelector::LastModified);
    const auto modified = ParseHttpDate(header);
    if (!modified) co_return QString();
    constexpr qint64 kSecondsPerHour = 3600;
    date = modified->addSecs(context_.clockOptions.OffsetHours() * kSecondsPerHour)
               .toString(u"yyyy/MM/dd hh:mm:ss"_s);
  }
  const auto known = ParseDateText(date);
  if (!known) co_return QString();
  co_return FormatDate(*known, format);
}

}  // namespace zentorin
