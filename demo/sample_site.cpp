// SPDX-License-Identifier: MIT
#include "demo/sample_site.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <cstdint>
#include <utility>

#include <iconv.h>

namespace zentorin::demo {

using namespace Qt::Literals::StringLiterals;

namespace {

const QRegularExpression kTemplate(u"\\{([ymd]+)\\}"_s);

// The expression that a file's name stands for: its templates match that many digits.
QRegularExpression UrlOf(const QString& relativePath) {
  QString expression = QRegularExpression::escape(relativePath);
  static const QRegularExpression kEscaped(u"\\\\\\{([ymd]+)\\\\\\}"_s);
  QRegularExpressionMatch found;
  while ((found = kEscaped.match(expression)).hasMatch()) {
    expression.replace(found.capturedStart(), found.capturedLength(),
                       u"\\d{%1}"_s.arg(found.capturedLength(1)));
  }
  return QRegularExpression(QRegularExpression::anchoredPattern(expression));
}

QString FillTemplates(QString text, const QDateTime& date) {
  QRegularExpressionMatch found;
  while ((found = kTemplate.match(text)).hasMatch()) {
    const QString format = found.captured(1).replace(u'm', u'M');
    text.replace(found.capturedStart(), found.capturedLength(), date.toString(format));
  }
  return text;
}

// `charset` is a name that iconv knows. Empty when the text does not fit into it.
QByteArray Encode(const QString& text, const QByteArray& charset) {
  iconv_t converter = iconv_open(charset.constData(), "UTF-8");
  // iconv_open answers -1 for a character set that it does not know.
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return {};
  QByteArray in = text.toUtf8();
  QByteArray out(in.size() * 2 + 16, '\0');
  char* from = in.data();
  char* to = out.data();
  size_t left = in.size();
  size_t room = out.size();
  const bool whole = iconv(converter, &from, &left, &to, &room) != size_t(-1) &&
                     iconv(converter, nullptr, nullptr, &to, &room) != size_t(-1);
  iconv_close(converter);
  out.truncate(to - out.data());
  return whole ? out : QByteArray();
}

QByteArray ContentType(const QString& file) {
  static const QHash<QString, QByteArray> kTypes{
      {u"html"_s, "text/html"}, {u"csv"_s, "text/csv"},        {u"mp3"_s, "audio/mpeg"},
      {u"jpg"_s, "image/jpeg"}, {u"pdf"_s, "application/pdf"}, {u"zip"_s, "application/zip"},
  };
  return kTypes.value(QFileInfo(file).suffix(), "application/octet-stream");
}

std::optional<QByteArray> ReadAll(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.readAll();
}

}  // namespace

SampleSite::SampleSite(const QString& folder, QDateTime today) : today_(std::move(today)) {
  const QDir root(QFileInfo(folder).absoluteFilePath());
  for (const QString& host : root.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QDirIterator files(root.filePath(host), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      entries_.push_back({.file = path, .url = UrlOf(root.relativeFilePath(path)), .charset = {}});
    }
  }
  if (entries_.empty()) {
    fault_ = u"%1: no hosts with files here"_s.arg(folder);
    return;
  }
  ReadTable(root.filePath(u"served-as.txt"_s));
}

void SampleSite::ReadTable(const QString& path) {
  const std::optional<QByteArray> table = ReadAll(path);
  if (!table) {
    fault_ = u"%1: cannot be read"_s.arg(path);
    return;
  }
  const QDir root = QFileInfo(path).dir();
  for (const QString& line : QString::fromUtf8(*table).split(u'\n', Qt::SkipEmptyParts)) {
    if (line.startsWith(u'#')) continue;
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const QString file = root.filePath(words.value(0));
    const auto entry = std::ranges::find_if(
        entries_, [&](const Entry& candidate) { return candidate.file == file; });
    if (words.size() != 4 || entry == entries_.end()) {
      fault_ = u"%1: a line that fits no file: %2"_s.arg(path, line);
      return;
    }
    if (words[1] != "-"_L1) entry->charset = words[1].toLatin1();
    entry->ageDays = words[2].toInt();
    entry->charsetInHeader = words[3] == "header"_L1;
  }
}

std::optional<SampleFile> SampleSite::Find(const QString& host, const QString& path) const {
  const QString encoded = path.section(u'?', 0, 0);
  const QString url = host + QString::fromUtf8(QByteArray::fromPercentEncoding(encoded.toLatin1()));
  const auto entry = std::ranges::find_if(
      entries_, [&](const Entry& candidate) { return candidate.url.match(url).hasMatch(); });
  if (entry == entries_.end()) return std::nullopt;
  std::optional<QByteArray> bytes = ReadAll(entry->file);
  if (!bytes) return std::nullopt;

  SampleFile file{.contentType = ContentType(entry->file),
                  .body = *std::move(bytes),
                  .lastModified = today_.addDays(-entry->ageDays)};
  if (!entry->charset.isEmpty()) {
    // Japanese sites mean code page 932 when they say Shift_JIS.
    const QByteArray codec = entry->charset == "Shift_JIS" ? "CP932" : entry->charset;
    file.body = Encode(FillTemplates(QString::fromUtf8(file.body), today_), codec);
    if (entry->charsetInHeader) file.contentType += "; charset=" + entry->charset;
  }
  return file;
}

}  // namespace zentorin::demo
