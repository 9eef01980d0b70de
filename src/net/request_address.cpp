// SPDX-License-Identifier: MIT
#include "net/request_address.h"

#include <QUrl>
#include <algorithm>
#include <string_view>

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsControl(QChar c) {
  return c.unicode() < 0x20 || c.unicode() == 0x7f;
}

bool IsAscii(QStringView text) {
  return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
}

qsizetype SchemeLength(const QString& url) {
  for (const QLatin1StringView scheme : {"http://"_L1, "https://"_L1}) {
    if (url.startsWith(scheme, Qt::CaseInsensitive)) return scheme.size();
  }
  return 0;
}

// "user@host:port" with the host in ASCII; empty when there is no host or it cannot be one.
QByteArray WireAuthority(const QString& authority) {
  const qsizetype hostBegin = authority.lastIndexOf(u'@') + 1;
  const bool bracketed = authority.indexOf(u'[', hostBegin) == hostBegin;
  qsizetype hostEnd = authority.indexOf(u':', bracketed ? authority.indexOf(u']') : hostBegin);
  if (hostEnd < 0) hostEnd = authority.size();
  const QString host = authority.mid(hostBegin, hostEnd - hostBegin);
  if (host.isEmpty() || authority.contains(u' ')) return {};
  const QByteArray wireHost = IsAscii(host) ? host.toLatin1() : QUrl::toAce(host);
  if (wireHost.isEmpty()) return {};
  return authority.left(hostBegin).toUtf8() + wireHost + authority.mid(hostEnd).toUtf8();
}

QByteArray WirePath(const QString& path) {
  static constexpr std::string_view kHex = "0123456789ABCDEF";
  const QByteArray bytes = path.toUtf8();
  QByteArray wire;
  wire.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value == ' ' || value >= 0x80) {
      wire += '%';
      wire += kHex[value >> 4U];
      wire += kHex[value & 0xFU];
    } else {
      wire += byte;
    }
  }
  return wire;
}

}  // namespace

QByteArray WireAddress(const QString& url) {
  const qsizetype begin = SchemeLength(url);
  if (begin == 0 || std::ranges::any_of(url, IsControl)) return {};
  const auto endsAuthority = [](QChar c) { return c == u'/' || c == u'?' || c == u'#'; };
  const auto* end = std::find_if(url.begin() + begin, url.end(), endsAuthority);
  const qsizetype pathBegin = end - url.begin();
  const QByteArray authority = WireAuthority(url.mid(begin, pathBegin - begin));
  if (authority.isEmpty()) return {};
  return url.left(begin).toLatin1() + authority + WirePath(url.mid(pathBegin));
}

QString HostOfWireAddress(const QByteArray& address) {
  const qsizetype begin = address.indexOf("://") + 3;
  const auto* end = std::find_if(address.begin() + begin, address.end(),
                                 [](char c) { return c == '/' || c == '?' || c == '#'; });
  const QByteArray authority = address.mid(begin, end - address.begin() - begin);
  return QString::fromUtf8(authority.mid(authority.lastIndexOf('@') + 1)).toLower();
}

}  // namespace zentorin
