// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

namespace zentorin {

// Text of the program's files: Shift_JIS as code page 932 reads it. Conversions are exact both
// ways for every text that EncodeAnsi accepts.

// Bytes that are no character become U+FFFD, one for each byte.
QString DecodeAnsi(QByteArrayView bytes);

// A character that code page 932 cannot hold.
struct UnencodableCharacter {
  qsizetype position = 0;  // index into the text, in UTF-16 units
  QString character;       // the whole character, also when it takes two units
};

struct AnsiBytes {
  QByteArray bytes;                           // empty when `fault` is set
  std::optional<UnencodableCharacter> fault;  // the first one
};

AnsiBytes EncodeAnsi(QStringView text);

// Splits a file's text into lines at CR LF and at bare LF. A line end at the end of the text does
// not begin a further line.
QStringList SplitLines(const QString& text);

// False when this machine lacks the conversion; checked once at start-up.
bool AnsiCodecAvailable();

}  // namespace zentorin
