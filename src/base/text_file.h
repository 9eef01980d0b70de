// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "base/outcome.h"

namespace zentorin {

// Only a regular file of at most `maxBytes`; else `bytes` stays as it was.
Outcome ReadWholeFile(const QString& path, qint64 maxBytes, QByteArray& bytes);

// Whole or not at all, also in a crash. A link stays, the file behind it is replaced. Never written
// in place, so it needs leave to make files in that folder.
Outcome WriteWholeFile(const QString& path, const QByteArray& bytes);

Outcome WriteFailure(const QString& path, RunTimeError error);

}  // namespace zentorin
