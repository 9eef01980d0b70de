// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>

// Turns bytes into text by the name of a character set.
namespace zentorin::Decode_ADDO {

// Any name or alias that the system's converter knows, letter case ignored. Undecodable bytes
// become U+FFFD; an unknown name gives nothing.
std::optional<QString> TryDecode(QByteArrayView bytes, const QString& charset);

// As above; an unknown name gives "".
QString Decode(QByteArrayView bytes, const QString& charset);

QString DecodeShiftJis(QByteArrayView bytes);
QString DecodeIso2022Jp(QByteArrayView bytes);
QString DecodeEucJp(QByteArrayView bytes);
QString DecodeUtf7(QByteArrayView bytes);
QString DecodeUtf8(QByteArrayView bytes);

// The rule of the XMLHTTP stage: a fixed table from page names to decoders. Names outside it, the
// judge's own "JIS" and "EUC" among them, leave the bytes undecoded: each byte one character.
QString DecodeByTable(QByteArrayView bytes, const QString& upperCaseName);

// The rule of the document stage: the first of `names` that is known decodes as what it is, the
// judge's "JIS", "EUC" and "UNICODE" included; with none known, as the judge says. Empty names are
// passed over. A byte-order mark is dropped.
QString DecodeDocument(QByteArrayView bytes, const QStringList& names);

}  // namespace zentorin::Decode_ADDO
