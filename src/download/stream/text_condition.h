// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <optional>

namespace zentorin {

// Evaluates small conditions over texts, such as
//   title == "確認" && pid = tool || status ^ "exists"
//
// Operators, loosest first; those of one line bind alike:
//   ||                       any side holds
//   &&                       both sides hold
//   !                        in front of a comparison or of a text: negates the whole of it
//   == !=                    equal or not, to the letter
//   = <>                     equal or not, letter case ignored
//   < > <= >=                order: of numbers if both sides are decimal ones, else of characters
//   ^                        the left text contains the right one, letter case ignored
// A text alone holds unless it is empty or "0". There are no two comparisons in a row ("a < b < c")
// and no brackets: "(" and ")" stand in quotes only.
//
// A text stands in double quotes, in which a doubled quote is a quote, or is the name of a
// variable. A word that names no variable stands for itself ("100", "確認").
//
// Nothing for a condition that cannot be read. Time grows with the text's length, and nothing
// nests.
std::optional<bool> EvaluateCondition(const QString& condition,
                                      const QHash<QString, QString>& variables = {});

}  // namespace zentorin
