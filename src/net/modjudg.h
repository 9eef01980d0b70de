// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

// Finds out the character set of a page's bytes.
namespace zentorin::modJUDG {

// A score of this or more means that the bytes can only be this encoding.
inline constexpr int kCertain = 9999;

int ScoreJis(QByteArrayView bytes);
int ScoreUnicode(QByteArrayView bytes);
int ScoreUtf8(QByteArrayView bytes);
int ScoreUtf7(QByteArrayView bytes);
int ScoreShiftJis(QByteArrayView bytes);
int ScoreEuc(QByteArrayView bytes);

// "JIS", "UNICODE", "UTF8", "UTF7", "SJIS" (certain), "SHIFT_JIS" (by score) or "EUC".
QString Judge(QByteArrayView bytes);

// What the first meta tag with a charset declares, as written and without quotes; empty when there
// is none. The reading of the document stage.
QString DeclaredCharset(QByteArrayView bytes);

// In upper case: the declaration as the XMLHTTP stage finds it, which of a line with a meta tag
// takes the last "charset=", in whatever tag that stands; else the verdict.
QString CharsetOfPage(QByteArrayView bytes);

}  // namespace zentorin::modJUDG
