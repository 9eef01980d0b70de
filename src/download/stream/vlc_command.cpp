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

// Empty for an address that VLC would not take for a stream elsewhere: it also opens files, discs
// and screens.
QString StreamAddress(const QString& address) {
  const QByteArray plain = WireAddress(address);
  if (!plain.isEmpty()) return QString::fromLatin1(plain);
  constexpr QLatin1StringView kMms("mms://");
  constexpr QLatin1StringView kHttp("http://");
  if (!address.startsWith(kMms, Qt::CaseInsensitive)) return {};
  // The rules of spelling are those of http.
  const QByteArray wire = WireAddress(kHttp + address.sliced(kMms.size()));
  if (wire.isEmpty()) return {};
  return kMms + QString::fromLatin1(wire).sliced(kHttp.size());
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
                       QStringLiteral("--no-interact"),      QStringLiteral("--quiet"),
                       QStringLiteral("--play-and-exit"),    QStringLiteral("--rc-fake-tty"),
                       QStringLiteral("--rc-unix=") + socket};
  if (shown) {
    words += {QStringLiteral("--intf=qt"),
              QStringLiteral("--extraintf=oldrc"),
              QStringLiteral("--qt-start-minimized"),
              QStringLiteral("--no-qt-privacy-ask"),
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
           QStringLiteral(",dst=") + ChainText(recording.path) + u'}';
  words += {QStringLiteral("--sout=") + chain, address};
  return words;
}

}  // namespace zentorin
