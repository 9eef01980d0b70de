// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace zentorin {

// Makes one safe path segment from a name that a page or server gave: percent-decoded once (as
// UTF-8 when valid), "/", "\\", NUL and control characters and bidirectional marks replaced by "_",
// leading and trailing blanks and trailing dots removed, device names such as "CON" given a leading
// "_", cut to 255 bytes of UTF-8 on a character border with the extension kept. "..", "." and an
// empty name give "_".
QString CleanFileName(const QString& name);

// Cleans every segment of a relative path whose separators are "\\" or "/"; empty segments are
// dropped, so the result never begins with a separator and never climbs.
QString CleanRelativePath(const QString& path);

// True when `path` (absolute) stays inside `folder` (absolute) once every existing symbolic link on
// the way is followed. A link that dangles counts as leading out.
bool StaysInside(const QString& folder, const QString& path);

// Shows text from outside harmlessly: control and bidirectional characters become "\\u{hex}".
QString EscapeForDisplay(const QString& text);

}  // namespace zentorin
