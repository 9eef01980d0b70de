// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/text_file.h"

namespace zentorin {

class UrlList;

// Larger job numbers and longer files are refused.
inline constexpr int kMaxJobs = 10'000;
inline constexpr qint64 kMaxListFileBytes = 64LL * 1024 * 1024;

// A failure leaves the list as it was. A missing file is RunTimeError::PathMissing.
Outcome ReadUrlListFile(const QString& systemPath, UrlList& list);

Outcome WriteUrlListFile(const QString& systemPath, const UrlList& list);

}  // namespace zentorin
