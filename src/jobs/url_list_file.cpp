// SPDX-License-Identifier: MIT
#include "jobs/url_list_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/ansi_text.h"
#include "base/file_names.h"
#include "base/number_text.h"
#include "jobs/url_list.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// A job is 16 lines "number key = value", then an empty line. Values are neither quoted nor
// escaped.
struct Key {
  QLatin1StringView name;
  TargetUrlItem::Field field = TargetUrlItem::Number;
};

// In the order in which they are written. "disp_date" and "disp_modify" are crossed with the
// fields' names; existing files rely on it.
constexpr std::array kKeys = {
    Key{.name = "description"_L1, .field = TargetUrlItem::Description},
    Key{.name = "skip"_L1, .field = TargetUrlItem::Skip},
    Key{.name = "over_write"_L1, .field = TargetUrlItem::OverWrite},
    Key{.name = "only_under_root"_L1, .field = TargetUrlItem::OnlyUnderRoot},
    Key{.name = "root"_L1, .field = TargetUrlItem::Root},
    Key{.name = "sub_pattern"_L1, .field = TargetUrlItem::SubPattern},
    Key{.name = "depth"_L1, .field = TargetUrlItem::Depth},
    Key{.name = "file_pattern"_L1, .field = TargetUrlItem::FilePattern},
    Key{.name = "save_path"_L1, .field = TargetUrlItem::SavePath},
    Key{.name = "tree_folder"_L1, .field = TargetUrlItem::TreeFolder},
    Key{.name = "disp_date"_L1, .field = TargetUrlItem::DispModify},
    Key{.name = "disp_modify"_L1, .field = TargetUrlItem::Modify},
    Key{.name = "date"_L1, .field = TargetUrlItem::Date},
    Key{.name = "format"_L1, .field = TargetUrlItem::Format},
    Key{.name = "before"_L1, .field = TargetUrlItem::Before},
    Key{.name = "opt"_L1, .field = TargetUrlItem::Opt},
};
constexpr qsizetype kLinesPerJob = kKeys.size() + 1;

constexpr QByteArrayView kSeparator(" = ");
constexpr int kMaxQuoted = 40;  // characters of a faulty text that a message repeats

Outcome FileFailure(const QString& what) {
  return Outcome::FailedWithNumber(RunTimeError::Other, what);
}

Outcome LineFailure(const QString& path, qsizetype line, const QString& reason) {
  return FileFailure(
      u"ファイル「%1」の %2 行目を読み込めません。%3"_s.arg(path, QString::number(line), reason));
}

// True for Japanese text that someone saved as UTF-8. Read as Shift_JIS it would mostly be valid
// and mean nothing; a text of Shift_JIS is hardly ever valid UTF-8.
bool LooksLikeUtf8(const QByteArray& bytes) {
  constexpr char kFirstLead = '\xE3';  // of the kana, the kanji, the full-width forms and the mark
  constexpr char kLastLead = '\xEF';
  return std::ranges::any_of(bytes,
                             [](char byte) { return byte >= kFirstLead && byte <= kLastLead; }) &&
         bytes.isValidUtf8();
}

// Takes a line of the file into the jobs, which come in any order. Empty, or why the line cannot be
// taken. Lines that are none of the format are passed over.
QString TakeLine(QByteArrayView line, QList<TargetUrlItem>& items) {
  // No trail byte of the code page is a blank or "=", so the bytes can be searched as they are.
  const qsizetype separator = line.indexOf(kSeparator);
  if (separator < 0) return {};
  const QByteArrayView rest = line.sliced(separator + kSeparator.size());
  // A value that holds the separator itself is lost: the format has no way to write it.
  if (rest.indexOf(kSeparator) >= 0) return {};
  const QStringList words = DecodeAnsi(line.first(separator)).split(u' ', Qt::SkipEmptyParts);
  const QString number = words.value(0);
  const int job = WholeNumber(number);
  if (job < 1 || job > kMaxJobs) {
    return u"ジョブ番号「%1」は 1 から %2 までの数ではありません"_s.arg(
        EscapeForDisplay(number.left(kMaxQuoted)), QString::number(kMaxJobs));
  }
  // A number that no line names is an empty line, without a display number.
  while (items.size() < job) items += TargetUrlItem::FromLine({});
  TargetUrlItem& item = items[job - 1];
  item.Set(TargetUrlItem::Number, DisplayNumber(job - 1));
  const QString value = DecodeAnsi(rest);
  for (const Key& known : kKeys) {
    if (words.value(1) != known.name) continue;
    if (value.contains(QChar(QChar::ReplacementCharacter))) {
      return u"「%1」に Shift_JIS として読めない文字があります"_s.arg(known.name);
    }
    item.Set(known.field, TrimLeadingBlanks(FieldText(value)));
  }
  return {};
}

// The job, key and character that stand at a place of the text of a list.
QString DescribeFault(const QString& text, const UnencodableCharacter& fault) {
  const qsizetype line = QStringView(text).first(fault.position).count(u'\n');
  return u"%1 番目のジョブの「%2」に Shift_JIS で表せない文字「%3」（U+%4）があります"_s.arg(
      QString::number(line / kLinesPerJob + 1), kKeys[line % kLinesPerJob].name,
      EscapeForDisplay(fault.character),
      QString::number(fault.character.toUcs4().value(0), 16).toUpper().rightJustified(4, u'0'));
}

QString ListText(const UrlList& list) {
  QString text;
  for (int row = 0; row < list.Count(); ++row) {
    const QString number = QString::number(row + 1);
    for (const Key& key : kKeys) {
      text += number + u' ' + key.name + " = "_L1 + list.Item(row)[key.field] + "\r\n"_L1;
    }
    text += "\r\n"_L1;
  }
  return text;
}

}  // namespace

Outcome ReadUrlListFile(const QString& systemPath, UrlList& list) {
  QByteArray bytes;
  Outcome outcome = ReadWholeFile(systemPath, kMaxListFileBytes, bytes);
  if (!outcome.Ok()) return outcome;
  if (LooksLikeUtf8(bytes)) {
    return FileFailure(
        u"ファイル「%1」を読み込めません。文字コードが Shift_JIS ではなく UTF-8 です"_s.arg(
            systemPath));
  }
  QList<TargetUrlItem> items;
  qsizetype number = 0;
  for (qsizetype begin = 0; begin < bytes.size();) {
    const qsizetype found = bytes.indexOf('\n', begin);
    const qsizetype end = found < 0 ? bytes.size() : found;
    QByteArrayView line = QByteArrayView(bytes).sliced(begin, end - begin);
    if (line.endsWith('\r')) line.chop(1);
    begin = end + 1;
    ++number;
    // A text holds no NUL; a picture or a text in UTF-16 does.
    const QString fault =
        line.contains('\0') ? u"テキストではありません（NUL があります）"_s : TakeLine(line, items);
    if (!fault.isEmpty()) return LineFailure(systemPath, number, fault);
  }
  list.ReplaceAll(std::move(items));
  return {};
}

Outcome WriteUrlListFile(const QString& systemPath, const UrlList& list) {
  const QString failure = u"ファイル「%1」を書き込めません。%2"_s;
  // What could not be read back is not written.
  if (list.Count() > kMaxJobs) {
    return FileFailure(failure.arg(systemPath, u"ジョブは %1 件までです"_s.arg(kMaxJobs)));
  }
  const QString text = ListText(list);
  const AnsiBytes encoded = EncodeAnsi(text);
  if (encoded.fault) {
    return FileFailure(failure.arg(systemPath, DescribeFault(text, *encoded.fault)));
  }
  if (LooksLikeUtf8(encoded.bytes)) {
    return FileFailure(failure.arg(systemPath, u"文字化けした文字しかありません"_s));
  }
  if (encoded.bytes.size() > kMaxListFileBytes) {
    return FileFailure(
        failure.arg(systemPath, u"上限の %1 バイトを超えます"_s.arg(kMaxListFileBytes)));
  }
  return WriteWholeFile(systemPath, encoded.bytes);
}

}  // namespace zentorin
