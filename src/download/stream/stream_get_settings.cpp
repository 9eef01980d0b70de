// SPDX-License-Identifier: MIT
#include "download/stream/stream_get_settings.h"

#include <QDir>
#include <QFile>

#include "base/ansi_text.h"
#include "net/api_web.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxSettingsBytes = 1024LL * 1024;

QString SettingsPath(const QString& toolFolder) {
  return toolFolder + u"/StreamGet.ini"_s;
}

// A line break would begin a key of its own.
QString OneLine(const QString& text) {
  QString line = text;
  line.remove(u'\r').remove(u'\n');
  return line;
}

// The folder may be written in any letter case, as on the tool's own system.
void RemoveOldStreams(const QString& toolFolder) {
  const QDir tool(toolFolder);
  const auto folders = tool.entryList({u"inf"_s}, QDir::Dirs | QDir::NoDotAndDotDot);
  for (const QString& folder : folders) {
    QDir inf(tool.filePath(folder));
    const auto files = inf.entryList({u"*.ini"_s}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& file : files) inf.remove(file);
  }
}

}  // namespace

QString WindowsPath(const QString& path) {
  return u"Z:"_s + QString(path).replace(u'/', u'\\');
}

QString StreamGetIni(const StreamGetRecording& recording) {
  const QStringList lines = {
      u"[Option]"_s,
      u"SavePath="_s + OneLine(WindowsPath(recording.folder)),
      u"[ASF]"_s,
      u"ASFURL01="_s + OneLine(recording.address),
      u"[Position]"_s,
      u"MAIN=66,66,578,469"_s,
      u"DelayPlayMode=0"_s,
      u"ManualInputMode = 0"_s,
      u"ProtocolDetailMode = 0"_s,
      u"ProtocolDispMode = 1"_s,
      u"ReserveEditMode = 0"_s,
      u"ReserveMode = 0"_s,
      u"LASTPLAY="_s,
      u"TimeSetURL02=https://www.nict.go.jp/JST/JST5.html"_s,
      u"GASVersion=Ver 2.1.0.8c"_s,
      u"ASFPLAY="_s,
  };
  return lines.join(u"\r\n"_s) + u"\r\n"_s;
}

Outcome WriteStreamGetSettings(const QString& toolFolder, const StreamGetRecording& recording) {
  const AnsiBytes ini = EncodeAnsi(StreamGetIni(recording));
  if (ini.fault) {
    return Outcome::Failed(
        RunTimeError::BadFileName,
        SettingsPath(toolFolder) +
            u": Shift_JIS にない文字「%1」は StreamGet に渡せません。"_s.arg(ini.fault->character));
  }
  const Outcome written = WriteWholeFile(SettingsPath(toolFolder), ini.bytes);
  if (written.Ok()) RemoveOldStreams(toolFolder);
  return written;
}

QString StreamGetPlayed(const QString& toolFolder) {
  QByteArray bytes;
  if (!ReadWholeFile(SettingsPath(toolFolder), kMaxSettingsBytes, bytes).Ok()) return {};
  return API_Web::FirstMatch(DecodeAnsi(bytes), u"^ASFPLAY=([^\\r\\n]+)"_s).trimmed();
}

}  // namespace zentorin
