// SPDX-License-Identifier: MIT
#include "jobs/pattern_lists.h"

#include <utility>

#include "base/ansi_text.h"
#include "base/number_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxFileBytes = 4LL * 1024 * 1024;

const auto kSubUrlMark = "[sub url]"_L1;
const auto kFileMark = "[file]"_L1;
const auto kEndMark = "[end]"_L1;

}  // namespace

// The empty entries are separator lines. The archive entries do not end as the others do.
PatternLists::PatternLists() {
  subUrl_ = {
      uR"~(child url : (?:href|url|src)=["']?(.+?)["' >])~"_s,
      uR"~(  href    : href=["']?(.+?)["' >])~"_s,
      uR"~(  url     : url=["']?(.+?)["' >])~"_s,
      uR"~(  src     : src=["']?(.+?)["' >])~"_s,
  };
  file_ = {
      uR"~(全音声: <.+?(?:href|url)=["']?(.+\.(?:mp3|wav|wma|asx|mid))["' >])~"_s,
      uR"~( MP3  : <.+?(?:href|url)=["']?(.+?\.mp3)["' >])~"_s,
      uR"~( ASX  : <.+?(?:href|url)=["']?(.+?\.asx)["' >])~"_s,
      QString(),
      uR"~(全画像: <.+?(?:src|href)=["']?(.+?\.(?:gif|jpg|png|bmp))["' >])~"_s,
      uR"~( GIF  : <.+?(?:src|href)=["']?(.+?\.gif)["' >])~"_s,
      uR"~( JPG  : <.+?(?:src|href)=["']?(.+?\.jpg)["' >])~"_s,
      uR"~( PNG  : <.+?(?:src|href)=["']?(.+?\.png)["' >])~"_s,
      uR"~( BMP  : <.+?(?:src|href)=["']?(.+?\.bmp)["' >])~"_s,
      QString(),
      uR"~(全ドキュメント: <.+?(?:href|url)=["']?(.+?\.(?:csv|pdf|xls|doc))["' >])~"_s,
      uR"~( CSV  : <.+?(?:href|url)=["']?(.+?\.csv)["' >])~"_s,
      uR"~( PDF  : <.+?(?:href|url)=["']?(.+?\.pdf)["' >])~"_s,
      uR"~( XLS  : <.+?(?:href|url)=["']?(.+?\.xls)["' >])~"_s,
      uR"~( DOC  : <.+?(?:href|url)=["']?(.+?\.doc)["' >])~"_s,
      QString(),
      uR"~(全アーカイブ: <.+?(?:href|url)=["']?(.+?\.(?:lzh|zip|rar|tar))[ >]?)~"_s,
      uR"~( LZH  : <.+?(?:href|url)=["']?(.+?\.lzh)[ >]?)~"_s,
      uR"~( ZIP  : <.+?(?:href|url)=["']?(.+?\.zip)[ >]?)~"_s,
      uR"~( RAR  : <.+?(?:href|url)=["']?(.+?\.rar)[ >]?)~"_s,
      uR"~( TAR  : <.+?(?:href|url)=["']?(.+?\.tar)[ >]?)~"_s,
  };
}

Outcome PatternLists::LoadOrCreate(const QString& path) {
  QByteArray bytes;
  Outcome outcome = ReadWholeFile(path, kMaxFileBytes, bytes);
  if (outcome.error == RunTimeError::PathMissing) {
    QStringList lines = QStringList(kSubUrlMark) + subUrl_;
    lines += {QString(), kFileMark};
    lines += file_ + QStringList{QString(), kEndMark, QString()};
    return WriteWholeFile(path, EncodeAnsi(lines.join("\r\n"_L1)).bytes);
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
