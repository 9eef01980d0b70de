// SPDX-License-Identifier: MIT
#include "base/run_time_error.h"

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

QString DescribeRunTimeError(RunTimeError error) {
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
    case RunTimeError::PermissionDenied:
      return u"アクセスが許可されていません"_s;
    case RunTimeError::PathAccess:
      return u"フォルダであるか、アクセスできないパスです"_s;
    case RunTimeError::PathMissing:
      return u"パスが見つかりません"_s;
  }
  return u"予期しないエラーが発生しました"_s;
}

}  // namespace zentorin
