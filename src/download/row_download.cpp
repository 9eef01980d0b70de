// SPDX-License-Identifier: MIT
#include "download/row_download.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "base/activity.h"
#include "base/display_clock.h"
#include "base/drives.h"
#include "download/local_target.h"
#include "download/stream_capture.h"
#include "jobs/date_format.h"
#include "jobs/date_text.h"
#include "net/api_web.h"
#include "net/my_xml_http_request.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString WithSeparator(const QString& folder) {
  return folder.endsWith(u'\\') ? folder : folder + u'\\';
}

QString FolderPrefix(const QString& savePath, QString subFolder) {
  QString prefix = WithSeparator(savePath);
  if (subFolder.isEmpty()) return prefix;
  return WithSeparator(prefix + subFolder.replace(u'/', u'\\'));
}

// Of a file that came, or would have come, but was not saved.
MissReason NotSaved(const RowOutcome& row) {
  const bool noFolder = !row.folderOutcome.Ok();
  const QString why =
      noFolder ? row.folderOutcome.message : Outcome::Of(row.code.Error(), row.path).message;
  const QString& subject = noFolder ? row.folderOutcome.subject : row.path;
  return {MissKind::NotSaved, subject.isEmpty() ? why : subject + u": "_s + why};
}

// Of a recording that the tool itself says no more about.
QString WhyNotRecorded(RowCode code) {
  switch (code.Number()) {
    case RowCode::ToolNotInstalled:
      return u"ストリーミングの保存に使うプログラムがありません"_s;
    case RowCode::Imperfect:
      return u"最後まで録画できませんでした"_s;
    case RowCode::DownloadFailed:
      return u"録画できませんでした"_s;
    default:
      return {};
  }
}

MissReason NotRecorded(const StreamOutcome& recorded, const QString& address) {
  if (recorded.code.Number() >= 0 && !recorded.code.IsRunTimeError()) return {};
  if (!recorded.reason.isEmpty()) return {MissKind::NotRecorded, recorded.reason};
  const QString why = WhyNotRecorded(recorded.code);
  return {MissKind::NotRecorded, why.isEmpty() ? why : HostOf(address) + u": "_s + why};
}

PercentCodes CodesOf(const FetchChoices& choices) {
  return choices.decodeNames ? PercentCodes::Decode : PercentCodes::Keep;
}

// A folder of that name is none.
bool FileExists(const QString& path, int folder = AT_FDCWD) {
  const QString name = folder == AT_FDCWD ? path : LastSegment(path);
  struct stat status = {};
  return ::fstatat(folder, QFile::encodeName(name).constData(), &status, 0) == 0 &&
         !S_ISDIR(status.st_mode);
}

}  // namespace

RowDownload::RowDownload(const FetchContext& context, RunJob job, CancelToken cancel)
    : context_(context),
      job_(std::move(job)),
      cancel_(std::move(cancel)),
      saveFolder_(context.drives.ToSystemPath(job_.savePath), context.drives.ProgramFolder()),
      download_(context.engine, context.activity, context.choices, cancel_) {}

QCoro::Task<RowOutcome> RowDownload::Fetch(QString address, QString date) {
  const RowOutcome outcome = co_await TakeRow(address, date);
  download_.DropEarly(address);  // of a row that came to no download
  co_return outcome;
}

QCoro::Task<RowOutcome> RowDownload::TakeRow(QString address, QString date) {
  RowOutcome outcome;
  outcome.date = date;
  const QString subFolder = SubFolder(address);
  outcome.folderPrefix = FolderPrefix(job_.savePath, subFolder);
  SaveFolder::Made made = saveFolder_.Make(subFolder);
  if (made.outcome.error == RunTimeError::TooManyFiles) {
    download_.UseFewerDescriptors();
    made = saveFolder_.Make(subFolder);
  }
  if (!made.outcome.Ok()) {
    outcome.code = made.refused ? RowCode(made.outcome.error) : RowCode::FolderNotCreated;
    outcome.folderOutcome = made.outcome;
    outcome.reason = NotSaved(outcome);
    co_return outcome;
  }
  outcome.folder = made.path;
  folder_ = made.folder;
  if (IsStreamSuffix(SuffixOf(address))) {
    outcome.code = co_await CaptureStream(address, outcome);
  } else {
    outcome.code = co_await FetchFile(address, outcome);
  }
  const bool unexplained = outcome.reason.kind == MissKind::None;
  if (unexplained && outcome.code.IsRunTimeError()) outcome.reason = NotSaved(outcome);
  co_return outcome;
}

bool RowDownload::AskEarly(const QString& address, const QString& date) {
  if (IsStreamSuffix(SuffixOf(address)) || (NeedsDate() && !ParseDateText(date))) return true;
  const QString name = NameOf(PrefixOf(date), address);
  if (name.isEmpty()) return true;
  QString folder = saveFolder_.Path();
  if (job_.treeFolder) folder += u'/' + SubFolder(address).replace(u'\\', u'/');
  const bool isThere = !job_.overWrite && FileExists(folder + u'/' + name);
  return isThere || download_.AskEarly(address);
}

QCoro::Task<RowCode> RowDownload::FetchFile(QString address, RowOutcome& outcome) {
  const QString prefix = co_await DatePrefix(address, outcome);
  // Without its prefix the name may be that of another file, which no cancel may delete.
  if (cancel_.Cancelled()) co_return RowCode::Cancelled;
  const QString name = NameOf(prefix, address);
  if (name.isEmpty()) co_return RunTimeError::BadFileName;
  const QString path = outcome.folder + u'/' + name;
  outcome.path = path;
  if (!job_.overWrite && FileExists(path, folder_)) {
    outcome.reason = {};
    co_return RowCode::SkipExisting;
  }
  const Outcome allowed = saveFolder_.AllowsIn(path);
  if (!allowed.Ok()) co_return allowed.error;

  const FileDownload download = co_await download_.DownloadToFile(address, path, folder_);
  outcome.bytes = download.bytes;
  if (download.code != RowCode::Complete) outcome.reason = download.reason;
  // Half an old and half a new file must not remain; one that was not touched yet stays.
  if (download.spoiled) DeleteLocalFile(path);
  co_return download.code == RowCode::Fatal ? RowCode(RowCode::SkipNone) : download.code;
}

QString RowDownload::SubFolder(const QString& address) const {
  if (!job_.treeFolder) return {};
  return TreeFolder(address, job_.rootBase, job_.root, CodesOf(context_.choices));
}

QString RowDownload::NameOf(const QString& prefix, const QString& address) const {
  return LocalName(prefix, address, CodesOf(context_.choices));
}

// The code of a row that may not be written to that path.
std::optional<RowCode> RowDownload::Refusal(const QString& path) const {
  if (!job_.overWrite && FileExists(path)) return RowCode::SkipExisting;
  const Outcome allowed = saveFolder_.Allows(path);
  return allowed.Ok() ? std::nullopt : std::optional<RowCode>(allowed.error);
}

// Of a stream that an .asx file names; empty when it names none.
QCoro::Task<QString> RowDownload::StreamAddress(QString address, RowOutcome& outcome) {
  if (SuffixOf(address) != ".asx"_L1) co_return address;
  const FetchedPage page = co_await context_.http.FetchPageText(address, cancel_);
  const QString named = page.Ok() ? API_Web::StreamLink(page.text) : QString();
  if (!named.isEmpty()) co_return named;
  outcome.reason = MissReasonOf(page, address);
  if (outcome.reason.kind == MissKind::None && !cancel_.Cancelled()) {
    const QString why = u"ストリームのアドレスが書かれていません"_s;
    outcome.reason = {MissKind::NotRecorded, HostOf(address) + u": "_s + why};
  }
  co_return QString();
}

QCoro::Task<RowCode> RowDownload::CaptureStream(QString address, RowOutcome& outcome) {
  StreamRequest request;
  request.tool = context_.options.streamingTool;
  request.showTool = context_.options.vlcShow;
  request.address = co_await StreamAddress(address, outcome);
  if (cancel_.Cancelled()) co_return RowCode::Cancelled;
  if (request.address.isEmpty()) {
    context_.activity.Say(u"ＵＲＬ無効"_s, Tone::Fault);
    co_return RowCode::SkipNone;
  }
  QString name = NameOf({}, request.address);
  if (name.isEmpty()) co_return RunTimeError::BadFileName;
  // Whichever program records: this program's rule. StreamGet does not convert, so its sound is
  // missed under this name.
  if (context_.options.wmaToMp3) name = WithMp3Suffix(name);
  request.path = outcome.folder + u'/' + name;
  outcome.path = request.path;
  if (const auto refusal = Refusal(request.path)) co_return *refusal;
  // Nothing but a regular file is written over.
  const QFileInfo old(request.path);
  if (old.isSymLink() || (old.exists() && !old.isFile())) co_return RunTimeError::PathAccess;

  const Activity::Scope recording(context_.activity, Phase::Recording);
  const StreamOutcome recorded =
      co_await context_.capture.Capture(request, context_.activity, cancel_);
  context_.activity.SetRecorded(std::nullopt);
  outcome.reason = NotRecorded(recorded, request.address);
  if (recorded.code == RowCode::Complete) outcome.bytes = QFileInfo(request.path).size();
  if (!recorded.reason.isEmpty()) context_.activity.Say(recorded.reason, Tone::Fault);
  // As with plain files, also one that was to be written over.
  if (cancel_.Cancelled()) DeleteLocalFile(request.path);
  co_return recorded.code;
}

// Empty when none is wanted and when no date is known. A date that the row lacks is asked for, in
// the time that the file list shows; when no answer came, the outcome says why.
QCoro::Task<QString> RowDownload::DatePrefix(QString address, RowOutcome& outcome) {
  QString& date = outcome.date;
  if (!NeedsDate()) co_return QString();
  if (date.isEmpty() || date == "-"_L1) {
    const HttpAnswer answer = co_await context_.http.QueryHead(address, cancel_);
    const HttpHead& head = answer.head;
    if (head.status == 0) {
      outcome.reason = MissReasonOf(answer.failure, 0, address).Of(u"更新日時"_s);
    }
    const auto modified = ParseHttpDate(QString::fromLatin1(head.Header("Last-Modified")));
    if (!modified) co_return QString();
    date = DisplayClock::TextOf(context_.clock.Shown(*modified));
  }
  co_return PrefixOf(date);
}

bool RowDownload::NeedsDate() const {
  return context_.options.addDate && !context_.options.addDateFormat.isEmpty();
}

QString RowDownload::PrefixOf(const QString& date) const {
  const auto known = NeedsDate() ? ParseDateText(date) : std::nullopt;
  return known ? FormatDate(*known, context_.options.addDateFormat) : QString();
}

}  // namespace zentorin
