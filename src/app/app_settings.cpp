// SPDX-License-Identifier: MIT
#include "app/app_settings.h"

#include <utility>
#include <variant>
#include <vector>

#include "base/ansi_text.h"
#include "base/number_text.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxFileBytes = 64LL * 1024 * 1024;

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
      {u"form left"_s, &settings.formLeft},
      {u"form top"_s, &settings.formTop},
      {u"form right"_s, &settings.formRight},
      {u"form bottom"_s, &settings.formBottom},
      {u"default save path"_s, &settings.defaultSavePath},
      {u"open folder"_s, &download.openFolder},
      {u"vlc show"_s, &download.vlcShow},
      {u"GMT use"_s, &settings.clock.useGmt},
      {u"GMT diff"_s, &settings.clock.gmtDiffHours},
      {u"vlc wma to mp3"_s, &download.wmaToMp3},
      {u"streaming tool"_s, &download.streamingTool},
      {u"auto close"_s, &download.autoClose},
      {u"add date"_s, &download.addDate},
      {u"add date format"_s, &download.addDateFormat},
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
    return **flag ? u"1"_s : u"0"_s;
  }
  return *std::get<QString*>(setting.field);
}

}  // namespace

Outcome AppSettings::Load(const QString& path) {
  *this = AppSettings();
  QByteArray bytes;
  Outcome outcome = ReadWholeFile(path, kMaxFileBytes, bytes);
  if (outcome.error == RunTimeError::PathMissing) return {};
  if (!outcome.Ok()) return outcome;
  const std::vector<Setting> known = SettingsOf(*this);
  for (const QString& line : SplitLines(DecodeAnsi(bytes))) {
    const QStringList parts = line.split(u" = "_s);
    if (parts.size() != 2) continue;
    const QString key = TrimBlanks(parts[0]).toLower();
    for (const Setting& setting : known) {
      if (setting.key == key) SetValue(setting, TrimLeadingBlanks(parts[1]));
    }
  }
  return {};
}

Outcome AppSettings::Save(const QString& path) const {
  AppSettings copy = *this;
  QByteArray bytes;
  for (const Setting& setting : SettingsOf(copy)) {
    const AnsiBytes line = EncodeAnsi(setting.key + u" = "_s + ValueOf(setting) + u"\r\n"_s);
    if (line.fault) {
      return Outcome::Failed(
          RunTimeError::Other,
          u"%1 に保存できません。「%2」の文字「%3」は Shift_JIS で表せません。"_s.arg(
              path, setting.key, line.fault->character));
    }
    bytes += line.bytes;
  }
  return WriteWholeFile(path, bytes);
}

}  // namespace zentorin
