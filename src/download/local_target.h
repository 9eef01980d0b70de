// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include "crawl/file_list_row.h"

namespace zentorin {

// The rules by which a row of the file list becomes an address, a folder and a file name. Rules
// about text; nothing here touches the disk.

// The row's address; `root` is the base of last resort.
QString RowAddress(const FileListRow& row, const QString& root);

// From the last "." on, in lower case; the whole rest of the address when that dot is not in its
// last segment.
QString SuffixOf(const QString& address);

// Rows with these suffixes are captured instead of fetched.
bool IsStreamSuffix(const QString& suffix);

// The text after the last "/".
QString LastSegment(const QString& address);

// Where in the mirrored tree the file of `address` lies, as a clean relative path; empty for a file
// that lies directly in the root's or the root base's directory.
QString TreeFolder(const QString& address, const QString& rootBase, const QString& root);

// One clean file name; empty when the address gives none. `prefix` is the date prefix, or empty.
QString LocalName(const QString& prefix, const QString& address);

// ".wma" at the end, in any letter case, becomes ".mp3".
QString WithMp3Suffix(const QString& name);

}  // namespace zentorin
