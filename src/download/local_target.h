// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include "base/file_names.h"
#include "crawl/file_list_row.h"

namespace zentorin {

// How a row becomes an address, a folder and a file name. Nothing here touches the disk.

QString RowAddress(const FileListRow& row, const QString& root);  // root: base of last resort

// From the last "." on, in lower case; the whole rest of the address when that dot is not in its
// last segment.
QString SuffixOf(const QString& address);

bool IsStreamSuffix(const QString& suffix);  // captured instead of fetched

QString LastSegment(const QString& address);  // behind the last "/"

// Where in the mirrored tree the file of `address` lies, as a clean relative path; empty for a file
// that lies directly in the root's or the root base's directory.
QString TreeFolder(const QString& address, const QString& rootBase, const QString& root,
                   PercentCodes codes = PercentCodes::Keep);

// One clean file name; empty when the address gives none. `prefix` is the date prefix, or empty.
QString LocalName(const QString& prefix, const QString& address,
                  PercentCodes codes = PercentCodes::Keep);

QString WithMp3Suffix(const QString& name);  // instead of ".wma" in any letter case

}  // namespace zentorin
