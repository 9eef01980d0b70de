// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/text_file.h"

namespace zentorin {

class UrlList;

// The .dat format: 16 lines "number key = value" per job in a fixed order, then an empty line.
// Values are neither quoted nor escaped; one that contains " = " cannot be read back.

// A job number above this is an error that names the line: no file makes the program hold more
// jobs.
inline constexpr int kMaxJobs = 10'000;
// A longer file is refused.
inline constexpr qint64 kMaxListFileBytes = 64LL * 1024 * 1024;

// Reads `systemPath` into the list. On any failure the list stays as it was and the message names
// the file and, where there is one, the line. A missing file is RunTimeError::PathMissing.
FileOutcome ReadUrlListFile(const QString& systemPath, UrlList& list);

// Writes all jobs; the file is replaced as a whole or not at all. A character that the file's
// character set lacks is a failure whose message names the job, the key and the character.
FileOutcome WriteUrlListFile(const QString& systemPath, const UrlList& list);

}  // namespace zentorin
