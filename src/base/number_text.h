// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

namespace zentorin {

// The number at the start of a text, blanks ignored: "3 days" is 3, "x" is 0, " -1.5e2" is -150.
// Never fails; a value out of range is clamped to a finite double.
double NumericValue(QStringView text);

// The same as a whole number, rounded half to even and clamped to 32 bits.
int WholeNumber(QStringView text);

// "#,##0": decimal digits in groups of three.
QString GroupedNumber(qint64 value);

// Blanks on the left up to `width` characters; longer texts stay whole.
QString PadLeft(const QString& text, int width);

// Removes ASCII blanks at both ends, and only those.
QString TrimBlanks(const QString& text);
QString TrimLeadingBlanks(const QString& text);

}  // namespace zentorin
