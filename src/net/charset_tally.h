// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

// How well bytes fit an encoding. A character that the end cuts off is neither evidence nor fault.
namespace zentorin::Charsets {

// Only the first this many bytes of ASCII count a point each: a long ASCII head decides nothing.
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

enum class ByteOrder { None, Little, Big };

// Of UTF-16 text without a mark, by the zero bytes of its ASCII characters; None for other bytes.
ByteOrder OrderOfUtf16(QByteArrayView bytes);

}  // namespace zentorin::Charsets
