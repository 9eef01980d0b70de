// SPDX-License-Identifier: MIT
#include "base/file_names.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>

#include <sys/stat.h>

#include "base/number_text.h"
#include "base/utf16.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMaxBytes = 255;
constexpr int kMaxExtensionBytes = 32;

bool IsBetween(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

// Characters that act on a terminal or a list instead of showing: control characters, line and
// paragraph separators, the marks that turn the direction of writing, and the byte-order mark,
// which readers of UTF-8 drop at the start of a text.
bool IsHarmfulToShow(char16_t unit) {
  return unit < 0x20 || IsBetween(unit, 0x7F, 0x9F) || unit == 0x061C ||
         IsBetween(unit, 0x200E, 0x200F) || IsBetween(unit, 0x2028, 0x202E) ||
         IsBetween(unit, 0x2066, 0x2069) || unit == 0xFEFF;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A "%" that no two hexadecimal digits follow stands for itself.
QByteArray DecodePercent(const QByteArray& bytes) {
  QByteArray decoded;
  decoded.reserve(bytes.size());
  for (qsizetype at = 0; at < bytes.size(); ++at) {
    const bool room = bytes[at] == '%' && at + 2 < bytes.size();
    const int high = room ? HexDigit(bytes[at + 1]) : -1;
    const int low = room ? HexDigit(bytes[at + 2]) : -1;
    if (high >= 0 && low >= 0) {
      decoded.append(static_cast<char>(high << 4 | low));
      at += 2;
    } else {
      decoded.append(bytes[at]);
    }
  }
  return decoded;
}

QString DecodeName(const QString& name) {
  if (!name.contains(u'%')) return name;
  QStringDecoder utf8(QStringDecoder::Utf8,
                      QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  const QString decoded = utf8.decode(DecodePercent(name.toUtf8()));
  return utf8.hasError() ? name : decoded;
}

QString ReplaceUnsafe(const QString& name) {
  QString safe = name;
  for (qsizetype at = 0; at < safe.size(); at += UnitsAt(safe, at)) {
    if (UnitsAt(safe, at) == 2) continue;
    const QChar c = safe[at];
    const bool separator = c == u'/' || c == u'\\';
    if (separator || c.isSurrogate() || IsHarmfulToShow(c.unicode())) safe[at] = u'_';
  }
  return safe;
}

QString Trimmed(const QString& name) {
  QStringView bare = name;
  while (bare.endsWith(u' ') || bare.endsWith(u'.')) bare.chop(1);
  return TrimLeadingBlanks(bare);
}

// The longest beginning of the text, whole characters only, that takes at most `bytes` of UTF-8.
QString FirstBytes(const QString& text, qsizetype bytes) {
  qsizetype at = 0;
  while (at < text.size()) {
    const qsizetype units = UnitsAt(text, at);
    const char16_t unit = text[at].unicode();
    bytes -= units + (unit >= 0x80) + (unit >= 0x800);
    if (bytes < 0) break;
    at += units;
  }
  return text.first(at);
}

QString Cut(const QString& name) {
  if (FirstBytes(name, kMaxBytes).size() == name.size()) return name;
  const qsizetype dot = name.lastIndexOf(u'.');
  QString extension = dot > 0 ? name.sliced(dot) : QString();
  if (FirstBytes(extension, kMaxExtensionBytes).size() < extension.size()) extension.clear();
  const QString stem = name.first(name.size() - extension.size());
  return Trimmed(FirstBytes(stem, kMaxBytes - extension.toUtf8().size()) + extension);
}

// Names that stand for devices on the file systems that a drive or a share may have.
bool IsDeviceName(const QString& name) {
  const QString stem = Trimmed(name.section(u'.', 0, 0)).toUpper();
  for (const char* device : {"CON", "PRN", "AUX", "NUL"}) {
    if (stem == QLatin1StringView(device)) return true;
  }
  const bool port = stem.startsWith(u"COM"_s) || stem.startsWith(u"LPT"_s);
  return port && stem.size() == 4 && IsBetween(stem[3].unicode(), u'1', u'9');
}

// Replaces the colon of a name that would be read as a path on a drive.
QString WithoutDrive(QString name) {
  const bool letter = !name.isEmpty() && IsBetween(name[0].unicode() | 0x20, u'a', u'z');
  if (letter && name.size() > 1 && name[1] == u':') name[1] = u'_';
  return name;
}

struct FreeMemory {
  void operator()(char* memory) const { std::free(memory); }  // NOLINT: realpath() asks for it
};

// Follows every link of an absolute path; nothing when a link dangles or a part cannot be read.
std::optional<QString> FollowLinks(const QString& path) {
  if (!path.startsWith(u'/') || path.contains(QChar(QChar::Null))) return {};
  QString real;  // the folder reached so far; empty is the root
  for (const QString& segment : path.split(u'/', Qt::SkipEmptyParts)) {
    if (segment == u"."_s) continue;
    if (segment == u".."_s) {
      real.truncate(std::max<qsizetype>(real.lastIndexOf(u'/'), 0));
      continue;
    }
    real += u'/' + segment;
    const QByteArray name = QFile::encodeName(real);
    struct stat status{};
    if (lstat(name.constData(), &status) != 0) {
      if (errno != ENOENT) return {};
    } else if (S_ISLNK(status.st_mode)) {
      const std::unique_ptr<char, FreeMemory> target(realpath(name.constData(), nullptr));
      if (!target) return {};
      real = QFile::decodeName(target.get());
      if (real == u"/"_s) real.clear();
    }
  }
  return real;
}

}  // namespace

QString CleanFileName(const QString& name, PercentCodes codes) {
  QString safe = ReplaceUnsafe(name);
  if (codes == PercentCodes::Decode) safe = ReplaceUnsafe(DecodeName(safe));
  QString clean = Cut(WithoutDrive(Trimmed(safe)));
  if (IsDeviceName(clean)) clean = Cut(u'_' + clean);
  return clean.isEmpty() ? u"_"_s : clean;
}

QString CleanRelativePath(const QString& path, PercentCodes codes) {
  QStringList clean;
  const QString text = QString(path).replace(u'\\', u'/');
  for (const QString& segment : text.split(u'/', Qt::SkipEmptyParts)) {
    clean.append(CleanFileName(segment, codes));
  }
  return clean.join(u'\\');
}

bool StaysInside(const QString& folder, const QString& path) {
  const std::optional<QString> realFolder = FollowLinks(folder);
  const std::optional<QString> realPath = FollowLinks(path);
  if (!realFolder || !realPath) return false;
  return *realPath == *realFolder || realPath->startsWith(*realFolder + u'/');
}

QString EscapeForDisplay(const QString& text) {
  QString shown;
  shown.reserve(text.size());
  for (const QChar c : text) {
    if (IsHarmfulToShow(c.unicode())) {
      shown += u"\\u{%1}"_s.arg(c.unicode(), 0, 16);
    } else {
      shown += c;
    }
  }
  return shown;
}

QString CutForDisplay(const QString& text) {
  constexpr qsizetype kMaxShown = 2048;
  if (text.size() <= kMaxShown) return EscapeForDisplay(text);
  return EscapeForDisplay(text.first(kMaxShown)) + u"…"_s;
}

}  // namespace zentorin
