// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// One safe path segment from a name that a page or server gave: percent-decoded, so never to be
// called twice; harmful characters and separators replaced by "_"; device names marked; cut to 255
// bytes of UTF-8 with the extension kept. Never empty, "." or "..".
QString CleanFileName(const QString& name);

// Segments cleaned and joined with "\\": never absolute, never climbing.
QString CleanRelativePath(const QString& path);

// Both absolute; links are followed. A dangling link, and what cannot be looked at, leads out.
bool StaysInside(const QString& folder, const QString& path);

// Control and bidirectional characters become "\\u{hex}".
QString EscapeForDisplay(const QString& text);

// Cut to 2,048 characters as well: a page may hold an address of megabytes.
QString CutForDisplay(const QString& text);

}  // namespace zentorin
