// SPDX-License-Identifier: MIT
#include "base/run_time_error.h"

#include <cerrno>

namespace zentorin {

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
      return QStringLiteral("ファイル名が正しくないか、長すぎます");
    case RunTimeError::InputOutput:
      return QStringLiteral("入出力エラーが発生しました");
    case RunTimeError::DiskFull:
      return QStringLiteral("空き容量が不足しています");
    case RunTimeError::PermissionDenied:
      return QStringLiteral("アクセスが許可されていません");
    case RunTimeError::PathAccess:
      return QStringLiteral("フォルダであるか、アクセスできないパスです");
    case RunTimeError::PathMissing:
      return QStringLiteral("パスが見つかりません");
  }
  return QStringLiteral("予期しないエラーが発生しました");
}

}  // namespace zentorin
