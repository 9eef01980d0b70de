// SPDX-License-Identifier: MIT
#include "jobs/pattern_lists.h"

#include <utility>

#include "base/ansi_text.h"
#include "base/number_text.h"

namespace zentorin {

namespace {

constexpr qint64 kMaxFileBytes = 4LL * 1024 * 1024;

const auto kSubUrlMark = QLatin1String("[sub url]");
const auto kFileMark = QLatin1String("[file]");
const auto kEndMark = QLatin1String("[end]");

QStringList BuiltInSubUrl() {
  return {
      QStringLiteral(R"~(child url : (?:href|url|src)=["']?(.+?)["' >])~"),
      QStringLiteral(R"~(  href    : href=["']?(.+?)["' >])~"),
      QStringLiteral(R"~(  url     : url=["']?(.+?)["' >])~"),
      QStringLiteral(R"~(  src     : src=["']?(.+?)["' >])~"),
  };
}

// The empty entries are separator lines. The archive entries do not end as the others do.
QStringList BuiltInFile() {
  return {
      QStringLiteral(R"~(全音声: <.+?(?:href|url)=["']?(.+\.(?:mp3|wav|wma|asx|mid))["' >])~"),
      QStringLiteral(R"~( MP3  : <.+?(?:href|url)=["']?(.+?\.mp3)["' >])~"),
      QStringLiteral(R"~( ASX  : <.+?(?:href|url)=["']?(.+?\.asx)["' >])~"),
      QString(),
      QStringLiteral(R"~(全画像: <.+?(?:src|href)=["']?(.+?\.(?:gif|jpg|png|bmp))["' >])~"),
      QStringLiteral(R"~( GIF  : <.+?(?:src|href)=["']?(.+?\.gif)["' >])~"),
      QStringLiteral(R"~( JPG  : <.+?(?:src|href)=["']?(.+?\.jpg)["' >])~"),
      QStringLiteral(R"~( PNG  : <.+?(?:src|href)=["']?(.+?\.png)["' >])~"),
      QStringLiteral(R"~( BMP  : <.+?(?:src|href)=["']?(.+?\.bmp)["' >])~"),
      QString(),
      QStringLiteral(R"~(全ドキュメント: <.+?(?:href|url)=["']?(.+?\.(?:csv|pdf|xls|doc))["' >])~"),
      QStringLiteral(R"~( CSV  : <.+?(?:href|url)=["']?(.+?\.csv)["' >])~"),
      QStringLiteral(R"~( PDF  : <.+?(?:href|url)=["']?(.+?\.pdf)["' >])~"),
      QStringLiteral(R"~( XLS  : <.+?(?:href|url)=["']?(.+?\.xls)["' >])~"),
      QStringLiteral(R"~( DOC  : <.+?(?:href|url)=["']?(.+?\.doc)["' >])~"),
      QString(),
      QStringLiteral(R"~(全アーカイブ: <.+?(?:href|url)=["']?(.+?\.(?:lzh|zip|rar|tar))[ >]?)~"),
      QStringLiteral(R"~( LZH  : <.+?(?:href|url)=["']?(.+?\.lzh)[ >]?)~"),
      QStringLiteral(R"~( ZIP  : <.+?(?:href|url)=["']?(.+?\.zip)[ >]?)~"),
      QStringLiteral(R"~( RAR  : <.+?(?:href|url)=["']?(.+?\.rar)[ >]?)~"),
      QStringLiteral(R"~( TAR  : <.+?(?:href|url)=["']?(.+?\.tar)[ >]?)~"),
  };
}

}  // namespace

PatternLists::PatternLists() : subUrl_(BuiltInSubUrl()), file_(BuiltInFile()) {}

FileOutcome PatternLists::LoadOrCreate(const QString& path) {
  QByteArray bytes;
  FileOutcome outcome = ReadWholeFile(path, kMaxFileBytes, bytes);
  if (outcome.error == static_cast<int>(RunTimeError::PathMissing)) {
    QStringList lines = QStringList(kSubUrlMark) + BuiltInSubUrl();
    lines += {QString(), kFileMark};
    lines += BuiltInFile() + QStringList{QString(), kEndMark, QString()};
    return WriteWholeFile(path, EncodeAnsi(lines.join(QLatin1String("\r\n"))).bytes);
  }
  if (!outcome.Ok()) return outcome;

  // The empty line that ends a section is read back as an entry, as this program always did.
  QStringList subUrl;
  QStringList file;
  QStringList* section = nullptr;
  for (const QString& line : SplitLines(DecodeAnsi(bytes))) {
    if (line == kSubUrlMark) {
      section = &subUrl;
    } else if (line == kFileMark) {
      section = &file;
    } else if (line == kEndMark) {
      section = nullptr;
    } else if (section != nullptr) {
      section->append(line);
    }
  }
  subUrl_ = std::move(subUrl);
  file_ = std::move(file);
  return {};
}

QString PatternLists::ExpressionOf(const QString& entry) {
  // An expression without a label is cut at its own first colon: labels are expected everywhere.
  const qsizetype colon = entry.indexOf(u':');
  return colon < 0 ? entry : TrimBlanks(entry.sliced(colon + 1));
}

}  // namespace zentorin
