// SPDX-License-Identifier: MIT
#include "base/outcome.h"

#include <cerrno>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

RunTimeError RunTimeErrorFromErrno(int systemError) {
  switch (systemError) {
    case 0:
      return RunTimeError::None;
    case ENOSPC:
    case EDQUOT:
      return RunTimeError::DiskFull;
    case EFBIG:
      return RunTimeError::FileTooLarge;
    case EMFILE:
    case ENFILE:
      return RunTimeError::TooManyFiles;
    case EACCES:
    case EPERM:
    case EROFS:
      return RunTimeError::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
      return RunTimeError::PathMissing;
    case EISDIR:
    case ELOOP:
    case ENXIO:
    case ENODEV:
    case EBUSY:
    case ETXTBSY:
      return RunTimeError::PathAccess;
    case EIO:
    case ESTALE:
      return RunTimeError::InputOutput;
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
      return RunTimeError::BadFileName;
    default:
      return RunTimeError::Other;
  }
}

namespace {

// Without a full stop.
QString Words(RunTimeError error) {
  switch (error) {
    case RunTimeError::None:
      return {};
    case RunTimeError::Other:
      break;
    case RunTimeError::BadFileName:
      return u"ファイル名が正しくないか、長すぎます"_s;
    case RunTimeError::InputOutput:
      return u"入出力エラーが発生しました"_s;
    case RunTimeError::DiskFull:
      return u"空き容量が不足しています"_s;
    case RunTimeError::FileTooLarge:
      return u"ファイルの大きさの上限を超えました"_s;
    case RunTimeError::TooManyFiles:
      return u"開けるファイルの数を超えました"_s;
    case RunTimeError::PermissionDenied:
      return u"アクセスが許可されていません"_s;
    case RunTimeError::PathAccess:
      return u"フォルダであるか、アクセスできないパスです"_s;
    case RunTimeError::PathMissing:
      return u"パスが見つかりません"_s;
  }
  return u"予期しないエラーが発生しました"_s;
}

}  // namespace

Outcome Outcome::Failed(RunTimeError error, const QString& message) {
  return {.error = error, .message = message, .subject = {}};
}

Outcome Outcome::FailedWithNumber(RunTimeError error, const QString& sentence) {
  return Failed(error,
                u"%1（エラー %2）。"_s.arg(sentence, QString::number(static_cast<int>(error))));
}

Outcome Outcome::Of(RunTimeError error, const QString& subject) {
  return {.error = error, .message = Words(error), .subject = subject};
}

Outcome Outcome::OfErrno(int systemError, const QString& subject) {
  return Of(RunTimeErrorFromErrno(systemError), subject);
}

QString Outcome::NumberAndMessage() const {
  return QString::number(static_cast<int>(error)) + u' ' + message;
}

}  // namespace zentorin
