// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>
#include <chrono>

namespace zentorin {

// Blanks are ignored: "3 days" is 3, "x" is 0, " -1.5e2" is -150. Never infinite.
double NumericValue(QStringView text);

int WholeNumber(QStringView text);  // rounded half to even, clamped to 32 bits

QString GroupedNumber(qint64 value);  // "#,##0"

QString SecondsText(std::chrono::milliseconds time);  // "4.9"

QString PadLeft(const QString& text, int width);  // longer texts stay whole

QString TrimBlanks(const QString& text);  // U+0020 alone
QString TrimLeadingBlanks(QStringView text);

}  // namespace zentorin
