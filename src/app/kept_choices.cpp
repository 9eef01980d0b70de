// SPDX-License-Identifier: MIT
#include "app/kept_choices.h"

#include <QSettings>
#include <algorithm>
#include <array>
#include <cerrno>

#include "base/file_names.h"
#include "base/text_file.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMaxFileBytes = 1LL * 1024 * 1024;
constexpr int kMaxQuoted = 40;  // characters of a faulty value that a message repeats

struct NumberKey {
  QLatin1StringView name;
  int FetchChoices::* field;
  IntRange range;
};

struct FlagKey {
  QLatin1StringView name;
  bool FetchChoices::* field;
};

constexpr std::array kNumbers = {
    NumberKey{"fetch/connections_per_host"_L1, &FetchChoices::connectionsPerHost,
              kConnectionsPerHost},
    NumberKey{"fetch/tries"_L1, &FetchChoices::tries, kTries},
    NumberKey{"fetch/top_speed_kb"_L1, &FetchChoices::topSpeed, kTopSpeed},
};

constexpr std::array kFlags = {
    FlagKey{"fetch/keep_server_date"_L1, &FetchChoices::keepServerDate},
    FlagKey{"fetch/decode_names"_L1, &FetchChoices::decodeNames},
    FlagKey{"fetch/proxy_for_files"_L1, &FetchChoices::proxyForFiles},
};

// A value with commas is a list, which has no text of its own.
QString TextOf(const QSettings& file, QLatin1StringView key) {
  const QVariant value = file.value(key);
  const bool isList = value.typeId() == QMetaType::QStringList;
  return (isList ? value.toStringList().join(u',') : value.toString()).trimmed();
}

// Empty, or what is wrong with the value and what counts in its place.
QString ReadNumber(const QString& text, const IntRange& range, int& field) {
  bool isNumber = false;
  const qlonglong number = text.toLongLong(&isNumber);
  if (isNumber) field = static_cast<int>(std::clamp<qlonglong>(number, range.least, range.most));
  if (isNumber && number == field) return {};
  return u"%1 から %2 までの数ではありません。%3 とします"_s.arg(
      QString::number(range.least), QString::number(range.most), QString::number(field));
}

QString ReadFlag(const QString& text, bool& field) {
  const QString word = text.toLower();
  if (word == "true"_L1 || word == "1"_L1) {
    field = true;
  } else if (word == "false"_L1 || word == "0"_L1) {
    field = false;
  } else {
    return u"true でも false でもありません。%1 とします"_s.arg(field ? u"true" : u"false");
  }
  return {};
}

}  // namespace

Outcome KeptChoices::Load(const QString& path, QStringList& faults) {
  *this = KeptChoices();
  // Says why a file cannot be read, which QSettings does not.
  QByteArray bytes;
  Outcome outcome = ReadWholeFile(path, kMaxFileBytes, bytes);
  if (outcome.error == RunTimeError::PathMissing) return {};
  if (!outcome.Ok()) return outcome;
  const QSettings file(path, QSettings::IniFormat);
  if (file.status() != QSettings::NoError) {
    faults +=
        u"ファイル「%1」に INI 形式として読めない行があります。"_s.arg(EscapeForDisplay(path));
  }
  const auto tell = [&](QLatin1StringView key, const QString& text, const QString& fault) {
    if (fault.isEmpty()) return;
    faults += u"ファイル「%1」の「%2」の値「%3」は %4。"_s.arg(
        EscapeForDisplay(path), key, EscapeForDisplay(text.left(kMaxQuoted)), fault);
  };
  for (const NumberKey& key : kNumbers) {
    if (!file.contains(key.name)) continue;
    const QString text = TextOf(file, key.name);
    tell(key.name, text, ReadNumber(text, key.range, choices.*key.field));
  }
  for (const FlagKey& key : kFlags) {
    if (!file.contains(key.name)) continue;
    const QString text = TextOf(file, key.name);
    tell(key.name, text, ReadFlag(text, choices.*key.field));
  }
  loaded_ = choices;
  return {};
}

Outcome KeptChoices::Save(const QString& path) {
  QSettings file(path, QSettings::IniFormat);
  bool changed = false;
  const auto keep = [&](const auto& keys) {
    for (const auto& key : keys) {
      if (choices.*key.field == loaded_.*key.field) continue;
      file.setValue(key.name, choices.*key.field);
      changed = true;
    }
  };
  keep(kNumbers);
  keep(kFlags);
  if (!changed) return {};
  errno = 0;
  file.sync();
  if (file.status() == QSettings::AccessError) {
    return WriteFailure(path, errno == 0 ? RunTimeError::PathAccess : RunTimeErrorFromErrno(errno));
  }
  loaded_ = choices;
  return {};
}

void KeptChoices::Take(const FetchChoices& before, const FetchChoices& after) {
  const auto take = [&](const auto& keys) {
    for (const auto& key : keys) {
      if (before.*key.field != after.*key.field) choices.*key.field = after.*key.field;
    }
  };
  take(kNumbers);
  take(kFlags);
}

}  // namespace zentorin
