// SPDX-License-Identifier: MIT
#include "download/stream/vlc_command.h"

#include "net/request_address.h"

namespace zentorin {
namespace {

QString Quoted(const QString& text) {
  return u'"' + text + u'"';
}

bool Converts(const QString& path) {
  return path.endsWith(QLatin1StringView(".mp3"), Qt::CaseInsensitive);
}

// A text inside a chain: in double quotes nothing but "\" and the quote has a meaning.
QString ChainText(QString text) {
  text.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
  return Quoted(text);
}

// "raw" strips what a player needs from pictures and WMA sound, so these get their container back.
// VLC's own writer of it notes two seconds too few as the length. The one of its codec library
// notes the true one, and writes as it goes only when it is told to: a recording that is broken off
// would be lost otherwise.
QString Container(const QString& path) {
  for (const QLatin1StringView ending :
       {QLatin1StringView(".wmv"), QLatin1StringView(".asf"), QLatin1StringView(".wma")}) {
    if (path.endsWith(ending, Qt::CaseInsensitive))
      return QStringLiteral("avformat{mux=asf,options={flush_packets=1}}");
  }
  return QStringLiteral("raw");
}

// VLC does not even ask for an address with one of these after the host, nor for one with a "%"
// that encodes nothing. Blanks are encoded already.
QString WithoutRefused(const QByteArray& wire) {
  constexpr QByteArrayView kRefused("{}|^[]<>\"`\\");
  constexpr QByteArrayView kHexDigits("0123456789ABCDEFabcdef");
  qsizetype from = wire.indexOf("://") + 3;
  while (from < wire.size() && !QByteArrayView("/?#").contains(wire[from])) ++from;
  QByteArray address = wire.left(from);
  for (qsizetype i = from; i < wire.size(); ++i) {
    const QByteArray digits = wire.mid(i + 1, 2);
    const bool encodes =
        digits.size() == 2 && kHexDigits.contains(digits[0]) && kHexDigits.contains(digits[1]);
    const bool refused = wire[i] == '%' ? !encodes : kRefused.contains(wire[i]);
    address += refused ? '%' + wire.mid(i, 1).toHex().toUpper() : wire.mid(i, 1);
  }
  return QString::fromUtf8(address);
}

// Empty for an address that VLC would not take for a stream elsewhere: it also opens files, discs
// and screens.
QString StreamAddress(const QString& address) {
  constexpr QLatin1StringView kMms("mms://");
  constexpr QLatin1StringView kHttp("http://");
  const bool isMms = address.startsWith(kMms, Qt::CaseInsensitive);
  // The rules of spelling are those of http.
  const QByteArray wire = WireAddress(isMms ? kHttp + address.sliced(kMms.size()) : address);
  if (wire.isEmpty()) return {};
  const QString spelled = WithoutRefused(wire);
  return isMms ? kMms + spelled.sliced(kHttp.size()) : spelled;
}

}  // namespace

QString VlcCommandText(const VlcRecording& recording) {
  const QString address = Quoted(recording.address);
  const QString path = Quoted(recording.path);
  if (!Converts(recording.path)) {
    return address + QStringLiteral(" --sout #duplicate{dst=std{access=file,mux=raw,dst=") + path +
           QStringLiteral(" vlc:quit}");
  }
  return address + QStringLiteral(" --sout #transcode{acodec=mp3,channels=2,ab=") +
         QStringLiteral("192") + QStringLiteral("}:duplicate{dst=std{access=file,mux=raw,dst=") +
         path + QStringLiteral("}");
}

QStringList VlcArguments(const VlcRecording& recording, const QString& socket, bool shown) {
  const QString address = StreamAddress(recording.address);
  if (address.isEmpty()) return {};
  // The user's own settings could add interfaces, windows and a running player that takes over.
  QStringList words = {QStringLiteral("--ignore-config"),    QStringLiteral("--no-one-instance"),
                       QStringLiteral("--no-dbus"),          QStringLiteral("--no-media-library"),
                       QStringLiteral("--no-interact"),      QStringLiteral("--verbose=2"),
                       QStringLiteral("--play-and-exit"),    QStringLiteral("--rc-fake-tty"),
                       QStringLiteral("--rc-unix=") + socket};
  if (shown) {
    words += {QStringLiteral("--intf=qt"),
              QStringLiteral("--extraintf=oldrc"),
              QStringLiteral("--qt-start-minimized"),
              QStringLiteral("--no-qt-privacy-ask"),
              QStringLiteral("--no-qt-recentplay"),
              QStringLiteral("--qt-notification=0"),
              QStringLiteral("--no-qt-error-dialogs")};
  } else {
    words.append(QStringLiteral("--intf=oldrc"));
  }
  QString chain = QStringLiteral("#");
  if (Converts(recording.path)) {
    chain += QStringLiteral("transcode{acodec=mp3,channels=2,ab=192}:");
  }
  chain += QStringLiteral("std{access=file,mux=") + Container(recording.path) +
           QStringLiteral(",dst=") + ChainText(recording.file) + u'}';
  words += {QStringLiteral("--sout=") + chain, address};
  return words;
}

}  // namespace zentorin
