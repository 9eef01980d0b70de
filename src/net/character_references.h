// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// "&amp;", "&lt;", "&gt;", "&quot;", "&apos;" and numeric references, but those to control
// characters, to surrogates and beyond Unicode.
QString DecodeReferences(const QString& link);

// The link as written up to its "#"; the one inside a numeric reference begins no fragment.
QString WithoutFragment(const QString& link);

}  // namespace zentorin
