// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

namespace zentorin {

// Shift_JIS as code page 932 reads it, exact both ways for every text that EncodeAnsi() accepts.
// Bytes that are no character become U+FFFD, one for each byte.

QString DecodeAnsi(QByteArrayView bytes);

struct UnencodableCharacter {
  qsizetype position = 0;  // index into the text, in UTF-16 units
  QString character;       // the whole character, also when it takes two units
};

struct AnsiBytes {
  QByteArray bytes;                           // empty when `fault` is set
  std::optional<UnencodableCharacter> fault;  // the first one
};

AnsiBytes EncodeAnsi(QStringView text);

// At CR LF and at bare LF. A line end at the end of the text begins no further line.
QStringList SplitLines(const QString& text);

bool AnsiCodecAvailable();

}  // namespace zentorin
