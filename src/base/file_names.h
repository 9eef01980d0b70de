// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Makes one safe path segment from a name that a page or server gave: percent-decoded once (a name
// whose bytes are no valid UTF-8 stays as written), "/", "\\", control characters, separators and
// bidirectional marks replaced by "_", leading and trailing blanks and trailing dots removed, a
// drive's colon ("C:") replaced, device names such as "CON" given a leading "_", cut to 255 bytes
// of UTF-8 on a character border with the extension kept (when that takes at most 32 bytes). "..",
// "." and an empty name give "_". To be called once for a name: a second call would decode again.
QString CleanFileName(const QString& name);

// Cleans every segment of a relative path whose separators are "\\" or "/" and joins them with
// "\\"; empty segments are dropped, so the result never begins with a separator and never climbs.
QString CleanRelativePath(const QString& path);

// True when `path` (absolute) stays inside `folder` (absolute) once every existing symbolic link on
// the way is followed. A link that dangles counts as leading out, and so does what
// cannot be looked at. Parts of the path that do not exist yet are taken by their text.
bool StaysInside(const QString& folder, const QString& path);

// Shows text from outside harmlessly: control and bidirectional characters become "\\u{hex}".
QString EscapeForDisplay(const QString& text);

// The same for texts of any length, as addresses are, of which a page may hold one of megabytes:
// cut to 2,048 characters, with "…" behind.
QString CutForDisplay(const QString& text);

}  // namespace zentorin
