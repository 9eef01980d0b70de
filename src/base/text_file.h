// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "base/run_time_error.h"

namespace zentorin {

// What came of reading or writing one of the program's text files.
struct FileOutcome {
  int error = 0;    // 0, or a run-time error number
  QString message;  // empty, or a full sentence in Japanese that names the file
  bool Ok() const { return error == 0; }
};

// Reads a whole file of at most `maxBytes`. Anything but a regular file, a longer file and a
// failing read are errors; `bytes` is then left as it was.
FileOutcome ReadWholeFile(const QString& path, qint64 maxBytes, QByteArray& bytes);

// Replaces the file as a whole: after a crash or a failure the old content is still there. A
// symbolic link stays a link, the file that it leads to is replaced (and made when it is missing
// but its folder exists). Needs leave to make files in that folder: writing in place, which could
// leave half a file, is never tried instead.
FileOutcome WriteWholeFile(const QString& path, const QByteArray& bytes);

// What to say of a file that cannot be written for that reason.
FileOutcome WriteFailure(const QString& path, RunTimeError error);

}  // namespace zentorin
