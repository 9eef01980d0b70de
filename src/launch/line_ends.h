// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The text with every line end made CR LF: pairs stay, a lone LF becomes one, a lone CR is no line
// end and stays.
QString WithWholeLineEnds(const QString& text);

}  // namespace zentorin
