// SPDX-License-Identifier: MIT
#include "download/stream/stream_get_settings.h"

#include <QDir>
#include <QFile>

#include "base/ansi_text.h"
#include "net/api_web.h"

namespace zentorin {
namespace {

constexpr qint64 kMaxSettingsBytes = 1024LL * 1024;

QString SettingsPath(const QString& toolFolder) {
  return toolFolder + QStringLiteral("/StreamGet.ini");
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
  const auto folders = tool.entryList({QStringLiteral("inf")}, QDir::Dirs | QDir::NoDotAndDotDot);
  for (const QString& folder : folders) {
    QDir inf(tool.filePath(folder));
    const auto files =
        inf.entryList({QStringLiteral("*.ini")}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& file : files) inf.remove(file);
  }
}

}  // namespace

QString WindowsPath(const QString& path) {
  return QStringLiteral("Z:") + QString(path).replace(u'/', u'\\');
}

QString StreamGetIni(const StreamGetRecording& recording) {
  const QStringList lines = {
      QStringLiteral("[Option]"),
      QStringLiteral("SavePath=") + OneLine(WindowsPath(recording.folder)),
      QStringLiteral("[ASF]"),
      QStringLiteral("ASFURL01=") + OneLine(recording.address),
      QStringLiteral("[Position]"),
      QStringLiteral("MAIN=66,66,578,469"),
      QStringLiteral("DelayPlayMode=0"),
      QStringLiteral("ManualInputMode = 0"),
      QStringLiteral("ProtocolDetailMode = 0"),
      QStringLiteral("ProtocolDispMode = 1"),
      QStringLiteral("ReserveEditMode = 0"),
      QStringLiteral("ReserveMode = 0"),
      QStringLiteral("LASTPLAY="),
      QStringLiteral("TimeSetURL02=https://www.nict.go.jp/JST/JST5.html"),
      QStringLiteral("GASVersion=Ver 2.1.0.8c"),
      QStringLiteral("ASFPLAY="),
  };
  return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

FileOutcome WriteStreamGetSettings(const QString& toolFolder, const StreamGetRecording& recording) {
  const AnsiBytes ini = EncodeAnsi(StreamGetIni(recording));
  if (ini.fault) {
    return {.error = static_cast<int>(RunTimeError::BadFileName),
            .message = SettingsPath(toolFolder) +
                       QStringLiteral(": Shift_JIS にない文字「%1」は StreamGet に渡せません。")
                           .arg(ini.fault->character)};
  }
  const FileOutcome written = WriteWholeFile(SettingsPath(toolFolder), ini.bytes);
  if (written.Ok()) RemoveOldStreams(toolFolder);
  return written;
}

QString StreamGetPlayed(const QString& toolFolder) {
  QByteArray bytes;
  if (!ReadWholeFile(SettingsPath(toolFolder), kMaxSettingsBytes, bytes).Ok()) return {};
  return API_Web::FirstMatch(DecodeAnsi(bytes), QStringLiteral("^ASFPLAY=([^\\r\\n]+)")).trimmed();
}

}  // namespace zentorin
