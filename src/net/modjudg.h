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

// The page's own declaration in its markup, as written and without quotes; empty when there is
// none.
QString DeclaredCharset(QByteArrayView bytes);

// The declaration, else the verdict, in upper case.
QString CharsetOfPage(QByteArrayView bytes);

}  // namespace zentorin::modJUDG
