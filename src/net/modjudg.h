// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

namespace zentorin::modJUDG {

inline constexpr int kCertain = 9999;  // the bytes can only be this encoding

int ScoreJis(QByteArrayView bytes);
int ScoreUnicode(QByteArrayView bytes);
int ScoreUtf8(QByteArrayView bytes);
int ScoreUtf7(QByteArrayView bytes);
int ScoreShiftJis(QByteArrayView bytes);
int ScoreEuc(QByteArrayView bytes);

// "JIS", "UNICODE", "UTF8", "UTF7", "SJIS" (certain), "SHIFT_JIS" (by score) or "EUC".
QString Judge(QByteArrayView bytes);

// The first meta tag with a charset, as written; "" when there is none.
QString DeclaredCharset(QByteArrayView bytes);

// In upper case: the last "charset=" of a line with a meta tag, in whatever tag, else the verdict.
QString CharsetOfPage(QByteArrayView bytes);

}  // namespace zentorin::modJUDG
