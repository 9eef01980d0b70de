// SPDX-License-Identifier: MIT
#include "download/stream/vlc_command.h"

#include "net/request_address.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString Quoted(const QString& text) {
  return u'"' + text + u'"';
}

bool Converts(const QString& path) {
  return path.endsWith(".mp3"_L1, Qt::CaseInsensitive);
}

// A text inside a chain: in double quotes nothing but "\" and the quote has a meaning.
QString ChainText(QString text) {
  text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
  return Quoted(text);
}

// "raw" strips what a player needs from pictures and WMA sound, so these get their container back.
// VLC's own writer of it notes two seconds too few as the length. The one of its codec library
// notes the true one, and writes as it goes only when it is told to: a recording that is broken off
// would be lost otherwise.
QString Container(const QString& path) {
  for (const QLatin1StringView ending : {".wmv"_L1, ".asf"_L1, ".wma"_L1}) {
    if (path.endsWith(ending, Qt::CaseInsensitive)) {
      return u"avformat{mux=asf,options={flush_packets=1}}"_s;
    }
  }
  return u"raw"_s;
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
  constexpr QLatin1StringView kMms = "mms://"_L1;
  constexpr QLatin1StringView kHttp = "http://"_L1;
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
    return address + u" --sout #duplicate{dst=std{access=file,mux=raw,dst="_s + path +
           u" vlc:quit}"_s;
  }
  return address + u" --sout #transcode{acodec=mp3,channels=2,ab="_s + u"192"_s +
         u"}:duplicate{dst=std{access=file,mux=raw,dst="_s + path + u"}"_s;
}

QStringList VlcArguments(const VlcRecording& recording, const QString& socket, bool shown) {
  const QString address = StreamAddress(recording.address);
  if (address.isEmpty()) return {};
  // The user's own settings could add interfaces, windows and a running player that takes over.
  QStringList words = {u"--ignore-config"_s,    u"--no-one-instance"_s, u"--no-dbus"_s,
                       u"--no-media-library"_s, u"--no-interact"_s,     u"--verbose=2"_s,
                       u"--play-and-exit"_s,    u"--rc-fake-tty"_s,     u"--rc-unix="_s + socket};
  if (shown) {
    words += {u"--intf=qt"_s,
              u"--extraintf=oldrc"_s,
              u"--qt-start-minimized"_s,
              u"--no-qt-privacy-ask"_s,
              u"--no-qt-recentplay"_s,
              u"--qt-notification=0"_s,
              u"--no-qt-error-dialogs"_s};
  } else {
    words.append(u"--intf=oldrc"_s);
  }
  QString chain = u"#"_s;
  if (Converts(recording.path)) {
    chain += u"transcode{acodec=mp3,channels=2,ab=192}:"_s;
  }
  chain += u"std{access=file,mux="_s + Container(recording.path) + u",dst="_s +
           ChainText(recording.file) + u'}';
  words += {u"--sout="_s + chain, address};
  return words;
}

}  // namespace zentorin
