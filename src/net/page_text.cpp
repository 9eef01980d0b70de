// SPDX-License-Identifier: MIT
#include "net/page_text.h"

#include <QStringList>
#include <algorithm>
#include <initializer_list>
#include <optional>

#include "net/charset_tally.h"
#include "net/decode_addo.h"
#include "net/modjudg.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

using Charsets::ByteOrder;

// How much of a body is looked at for zero bytes.
constexpr qsizetype kScanned = 1 << 20;

bool IsOneOf(const QString& name, std::initializer_list<const char*> names) {
  return std::ranges::any_of(names, [&name](const char* one) {
    return name.compare(QLatin1StringView(one), Qt::CaseInsensitive) == 0;
  });
}

bool IsUtf16(const QString& charset) {
  return IsOneOf(charset, {"utf-16", "utf-16le", "utf-16be", "utf16", "unicode", "unicodefffe",
                           "ucs-2", "iso-10646-ucs-2"});
}

// Servers send these by default, whatever the page is.
bool IsServersDefault(const QString& charset) {
  return IsOneOf(charset, {"iso-8859-1", "iso8859-1", "iso_8859-1", "latin1", "us-ascii", "ascii"});
}

// What header and declaration name, as far as it is worth trying.
QStringList NamedCharsets(const HttpHead& head, QByteArrayView body) {
  const QString declared = modJUDG::DeclaredCharset(body);
  QStringList names;
  const QString ofHead = CharsetOfHead(head);
  // Almost any bytes are text in UTF-16, but none without a zero byte is a page.
  const bool hopeless =
      IsUtf16(ofHead) && !body.first(std::min(body.size(), kScanned)).contains('\0');
  if (!hopeless && (declared.isEmpty() || !IsServersDefault(ofHead))) names.append(ofHead);
  // A declaration that could be read byte by byte does not stand in UTF-16.
  names.append(IsUtf16(declared) ? u"UTF-8"_s : declared);
  return names;
}

QString WithoutMark(QString text) {
  if (text.startsWith(QChar::ByteOrderMark)) text.remove(0, 1);
  return text;
}

}  // namespace

QString CharsetOfHead(const HttpHead& head) {
  for (const QByteArray& part : head.Header("Content-Type").split(';').mid(1)) {
    const qsizetype equals = part.indexOf('=');
    if (equals < 0 || part.left(equals).trimmed().toLower() != "charset") continue;
    QByteArray name = part.mid(equals + 1).trimmed();
    if (name.startsWith('"') || name.startsWith('\'')) name = name.mid(1, name.size() - 2);
    return QString::fromLatin1(name.trimmed());
  }
  return {};
}

QString CharsetOfMark(QByteArrayView body) {
  if (body.startsWith("\xEF\xBB\xBF")) return u"UTF-8"_s;
  if (body.startsWith("\xFF\xFE")) return u"UTF-16LE"_s;
  if (body.startsWith("\xFE\xFF")) return u"UTF-16BE"_s;
  return {};
}

QString PageText(const HttpHead& head, QByteArrayView body) {
  if (const QString mark = CharsetOfMark(body); !mark.isEmpty()) {
    if (const auto text = Decode_ADDO::DecodeFitting(body, mark)) return WithoutMark(*text);
    body = body.sliced(mark == u"UTF-8" ? 3 : 2);
  }
  // Its bytes may fit other character sets by accident.
  const ByteOrder order = Charsets::OrderOfUtf16(body.first(std::min(body.size(), kScanned)));
  if (order != ByteOrder::None) {
    const QString name = order == ByteOrder::Big ? u"UTF-16BE"_s : u"UTF-16LE"_s;
    return Decode_ADDO::DecodeDocument(body, {name});
  }
  for (const QString& name : NamedCharsets(head, body)) {
    if (const auto text = Decode_ADDO::DecodeFitting(body, name)) return WithoutMark(*text);
  }
  return Decode_ADDO::DecodeDocument(body, {});
}

bool IsNoPage(const HttpHead& head) {
  const QString type = QString::fromLatin1(head.Header("Content-Type")).section(u';', 0, 0);
  const QString kind = type.section(u'/', 0, 0).trimmed();
  const QString name = type.section(u'/', 1).trimmed();
  if (IsOneOf(name, {"svg+xml", "x-ms-asx", "x-ms-wvx", "x-ms-wax"})) return false;
  if (IsOneOf(name, {"x-ms-asf"})) {  // films and lists alike: a list is told by its address
    return IsOneOf(head.finalUrl.section(u'?', 0, 0).right(4), {".asf", ".wmv", ".wma"});
  }
  if (IsOneOf(kind, {"audio", "image", "video", "font"})) return true;
  return IsOneOf(kind, {"application"}) && IsOneOf(name, {"pdf",
                                                          "ogg",
                                                          "x-shockwave-flash",
                                                          "zip",
                                                          "x-zip",
                                                          "x-zip-compressed",
                                                          "gzip",
                                                          "x-gzip",
                                                          "x-tar",
                                                          "x-gtar",
                                                          "x-bzip",
                                                          "x-bzip2",
                                                          "x-xz",
                                                          "zstd",
                                                          "x-compress",
                                                          "x-compressed",
                                                          "vnd.rar",
                                                          "x-rar",
                                                          "x-rar-compressed",
                                                          "x-7z",
                                                          "x-7z-compressed",
                                                          "x-lzh",
                                                          "x-lzh-compressed",
                                                          "x-lha",
                                                          "java-archive"});
}

}  // namespace zentorin
