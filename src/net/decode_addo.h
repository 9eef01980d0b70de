// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>

namespace zentorin::Decode_ADDO {

// Any name that the system's converter or the judge knows. Undecodable bytes become U+FFFD; an
// unknown name gives nothing.
std::optional<QString> Decode(QByteArrayView bytes, const QString& charset);

// Likewise, but only when every byte is part of a character; the end may cut the last one off.
std::optional<QString> DecodeFitting(QByteArrayView bytes, const QString& charset);

QString DecodeShiftJis(QByteArrayView bytes);
QString DecodeIso2022Jp(QByteArrayView bytes);
QString DecodeEucJp(QByteArrayView bytes);
QString DecodeUtf7(QByteArrayView bytes);
QString DecodeUtf8(QByteArrayView bytes);

// The rule of the XMLHTTP stage: names outside a fixed table, the judge's "JIS" and "EUC" among
// them, leave each byte one character.
QString DecodeByTable(QByteArrayView bytes, const QString& upperCaseName);

// The first known name counts, else the judge's verdict. A byte-order mark is dropped.
QString DecodeDocument(QByteArrayView bytes, const QStringList& names);

}  // namespace zentorin::Decode_ADDO
