// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// The page that a match of the sub-page pattern leads to, as the page writes it: without quotes,
// blanks and fragment. Empty when it leads to a file, is too long or is nothing but a fragment.
QString PageLinkOf(const QString& candidate);

}  // namespace zentorin
