// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// What becomes of "%E6%97%A5" in a name.
enum class PercentCodes { Keep, Decode };

// One safe path segment from a name that a page or server gave: harmful characters and separators
// replaced by "_"; device names marked; cut to 255 bytes of UTF-8 with the extension kept. Never
// empty, "." or "..". A decoded name is never to be cleaned twice.
QString CleanFileName(const QString& name, PercentCodes codes = PercentCodes::Keep);

// Segments cleaned and joined with "\\": never absolute, never climbing.
QString CleanRelativePath(const QString& path, PercentCodes codes = PercentCodes::Keep);

// Both absolute; links are followed. A dangling link, and what cannot be looked at, leads out.
bool StaysInside(const QString& folder, const QString& path);

// Control and bidirectional characters become "\\u{hex}".
QString EscapeForDisplay(const QString& text);

// Cut to 2,048 characters as well: a page may hold an address of megabytes.
QString CutForDisplay(const QString& text);

}  // namespace zentorin
