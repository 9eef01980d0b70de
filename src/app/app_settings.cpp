// SPDX-License-Identifier: MIT
#include "app/app_settings.h"

#include <utility>
#include <variant>
#include <vector>

#include "base/ansi_text.h"
#include "base/number_text.h"

namespace zentorin {
namespace {

constexpr qint64 kMaxFileBytes = 64LL * 1024 * 1024;

// One line of the file: its key and the field that it stands for.
struct Setting {
  using Field = std::variant<int*, bool*, QString*>;

  Setting(QString name, Field place) : key(std::move(name)), field(place) {}

  QString key;
  Field field;
};

// All settings in the order of the file. The keys of the clock hold capitals, and a line's key is
// compared in lower case: that is why they are never read back.
std::vector<Setting> SettingsOf(AppSettings& settings) {
  DownloadOptions& download = settings.download;
  return {
      {QStringLiteral("form left"), &settings.formLeft},
      {QStringLiteral("form top"), &settings.formTop},
      {QStringLiteral("form right"), &settings.formRight},
      {QStringLiteral("form bottom"), &settings.formBottom},
      {QStringLiteral("default save path"), &settings.defaultSavePath},
      {QStringLiteral("open folder"), &download.openFolder},
      {QStringLiteral("vlc show"), &download.vlcShow},
      {QStringLiteral("GMT use"), &settings.clock.useGmt},
      {QStringLiteral("GMT diff"), &settings.clock.gmtDiffHours},
      {QStringLiteral("vlc wma to mp3"), &download.wmaToMp3},
      {QStringLiteral("streaming tool"), &download.streamingTool},
      {QStringLiteral("auto close"), &download.autoClose},
      {QStringLiteral("add date"), &download.addDate},
      {QStringLiteral("add date format"), &download.addDateFormat},
  };
}

void SetValue(const Setting& setting, const QString& value) {
  if (auto* const* number = std::get_if<int*>(&setting.field)) {
    **number = WholeNumber(value);
  } else if (auto* const* flag = std::get_if<bool*>(&setting.field)) {
    **flag = WholeNumber(value) == 1;
  } else {
    *std::get<QString*>(setting.field) = value;
  }
}

QString ValueOf(const Setting& setting) {
  if (auto* const* number = std::get_if<int*>(&setting.field)) return QString::number(**number);
  if (auto* const* flag = std::get_if<bool*>(&setting.field)) {
    return **flag ? QStringLiteral("1") : QStringLiteral("0");
  }
  return *std::get<QString*>(setting.field);
}

}  // namespace

FileOutcome AppSettings::Load(const QString& path) {
  *this = AppSettings();
  QByteArray bytes;
  FileOutcome outcome = ReadWholeFile(path, kMaxFileBytes, bytes);
  if (outcome.error == static_cast<int>(RunTimeError::PathMissing)) return {};
  if (!outcome.Ok()) return outcome;
  const std::vector<Setting> known = SettingsOf(*this);
  for (const QString& line : SplitLines(DecodeAnsi(bytes))) {
    const QStringList parts = line.split(QStringLiteral(" = "));
    if (parts.size() != 2) continue;
    const QString key = TrimBlanks(parts[0]).toLower();
    for (const Setting& setting : known) {
      if (setting.key == key) SetValue(setting, TrimLeadingBlanks(parts[1]));
    }
  }
  return {};
}

FileOutcome AppSettings::Save(const QString& path) const {
  AppSettings copy = *this;
  QByteArray bytes;
  for (const Setting& setting : SettingsOf(copy)) {
    const AnsiBytes line =
        EncodeAnsi(setting.key + QStringLiteral(" = ") + ValueOf(setting) + QStringLiteral("\r\n"));
    if (line.fault) {
      return {.error = static_cast<int>(RunTimeError::Other),
              .message = QStringLiteral(
                             "%1 に保存できません。「%2」の文字「%3」は Shift_JIS で表せません。")
                             .arg(path, setting.key, line.fault->character)};
    }
    bytes += line.bytes;
  }
  return WriteWholeFile(path, bytes);
}

}  // namespace zentorin
