// SPDX-License-Identifier: MIT
#include "download/stream/vlc_log.h"

#include <QByteArrayList>
#include <algorithm>

#include "base/file_names.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kMaxLineBytes = 65'536;

// "attachment" is a picture inside the stream itself.
bool IsElsewhere(const QByteArray& scheme) {
  static const QByteArrayList kSchemes = {"http", "https", "mms", "mmsh",
                                          "mmst", "rtsp",  "rtp", "attachment"};
  return kSchemes.contains(scheme.toLower());
}

// Formats that are lists of other addresses. Where VLC's codec library reads them, it opens those
// by itself and nothing is logged of them; VLC's own readers of such lists come before it. A format
// may have several names: "hls,applehttp".
bool IsListOfAddresses(const QByteArray& format) {
  static const QByteArrayList kFormats = {"hls", "dash", "concat", "imf"};
  return std::ranges::any_of(format.split(','),
                             [](const QByteArray& name) { return kFormats.contains(name); });
}

// Null when the text is not there.
QByteArray Behind(const QByteArray& line, const QByteArray& text) {
  const qsizetype at = line.indexOf(text);
  return at < 0 ? QByteArray() : line.mid(at + text.size());
}

}  // namespace

void VlcLog::Take(const QByteArray& bytes) {
  buffer_ += bytes;
  qsizetype begin = 0;
  for (qsizetype end = buffer_.indexOf('\n'); end >= 0; end = buffer_.indexOf('\n', begin)) {
    TakeLine(buffer_.mid(begin, end - begin));
    begin = end + 1;
  }
  buffer_.remove(0, begin);
  if (buffer_.size() > kMaxLineBytes) buffer_.truncate(kMaxLineBytes);
}

// Lines quote the server as well. What it makes up can but refuse its own stream.
void VlcLog::TakeLine(const QByteArray& line) {
  const QByteArray address = Behind(line, " debug: creating access: ");
  if (!address.isNull()) TakeSource(address.left(address.indexOf("://")), address);
  const QByteArray reader = Behind(line, " debug: creating demux: access='");
  if (!reader.isNull()) {
    const QByteArray place = Behind(reader, "' location='");
    const QByteArray scheme = reader.left(reader.indexOf('\''));
    const QByteArray location = place.left(place.lastIndexOf("' file='"));
    // A reader over a stream that is open already, as for each segment of a list, names no place.
    if (!scheme.isEmpty() || !location.isEmpty()) TakeSource(scheme, scheme + "://" + location);
  }
  const QByteArray format = Behind(line, "avformat demux debug: detected format: ").trimmed();
  if (IsListOfAddresses(format)) Refuse(u"形式: "_s + QString::fromUtf8(format));
}

void VlcLog::TakeSource(const QByteArray& scheme, const QByteArray& source) {
  hasTold_ = true;
  if (!IsElsewhere(scheme)) Refuse(QString::fromUtf8(source.trimmed()));
}

void VlcLog::Refuse(const QString& what) {
  if (refused_.isEmpty()) refused_ = CutForDisplay(what);
}

}  // namespace zentorin
