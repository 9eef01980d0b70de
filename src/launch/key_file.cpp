// SPDX-License-Identifier: MIT
#include "launch/key_file.h"

#include "base/text_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxBytes = qint64{4} << 20;

QString WithoutEscapes(const QString& raw) {
  const QString codes = u"sntr\\"_s;
  const QString meanings = u" \n\t\r\\"_s;
  QString text;
  text.reserve(raw.size());
  for (qsizetype i = 0; i < raw.size(); ++i) {
    const bool escape = raw[i] == u'\\' && i + 1 < raw.size();
    const qsizetype code = escape ? codes.indexOf(raw[i + 1]) : -1;
    // What is no escape of this form stays as it is, both characters.
    text += code < 0 ? raw[i] : meanings[code];
    if (code >= 0) ++i;
  }
  return text;
}

}  // namespace

std::optional<KeyFile> KeyFile::Read(const QString& path) {
  QByteArray bytes;
  if (!ReadWholeFile(path, kMaxBytes, bytes).Ok() || bytes.contains('\0')) return std::nullopt;
  KeyFile file;
  QHash<QString, QString>* group = nullptr;
  for (const QByteArray& rawLine : bytes.split('\n')) {
    const QString line = QString::fromUtf8(rawLine).trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    if (line.startsWith(u'[') && line.endsWith(u']')) {
      const QString name = line.sliced(1, line.size() - 2);
      const bool seen = file.groups_.contains(name);
      group = seen ? nullptr : &file.groups_[name];
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (group == nullptr || equals <= 0) continue;
    const QString key = line.first(equals).trimmed();
    if (!group->contains(key)) group->insert(key, line.sliced(equals + 1).trimmed());
  }
  return file;
}

QString KeyFile::Raw(const QString& group, const QString& key) const {
  return groups_.value(group).value(key);
}

QString KeyFile::Text(const QString& group, const QString& key) const {
  return WithoutEscapes(Raw(group, key));
}

bool KeyFile::Flag(const QString& group, const QString& key) const {
  return Raw(group, key) == u"true"_s;
}

QStringList KeyFile::List(const QString& group, const QString& key) const {
  QStringList parts;
  for (const QString& part : Raw(group, key).split(u';', Qt::SkipEmptyParts)) {
    if (!part.trimmed().isEmpty()) parts.append(part.trimmed());
  }
  return parts;
}

}  // namespace zentorin
