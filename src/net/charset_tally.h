// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

// Counts how well bytes fit the encodings that pages use. A character that the end of the bytes
// cuts off is neither evidence nor fault.
namespace zentorin::Charsets {

// Bytes that stand for themselves count one point each, but only among the first this many; so
// pages that begin with a long ASCII head are told apart by what follows it.
inline constexpr qsizetype kSingleByteWindow = 1'000;

struct Tally {
  qint64 points = 0;
  qint64 sequences = 0;  // characters that are proper to the encoding
  qint64 faults = 0;     // bytes that cannot stand where they do
};

Tally TallyJis(QByteArrayView bytes);
Tally TallyUtf8(QByteArrayView bytes);
Tally TallyUtf7(QByteArrayView bytes);  // `sequences` counts kana
Tally TallyShiftJis(QByteArrayView bytes);
Tally TallyEuc(QByteArrayView bytes);

}  // namespace zentorin::Charsets
