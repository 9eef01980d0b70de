// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/display_clock.h"
#include "base/text_file.h"
#include "download/download_run.h"

namespace zentorin {

// The options that outlive a run of the program, kept in Conf.txt.
struct AppSettings {
  int formLeft = 130;  // the main window's normal rectangle, pixels
  int formTop = 100;
  int formRight = 812;
  int formBottom = 700;
  QString defaultSavePath;
  ClockOptions clock;
  DownloadOptions download;

  // A missing file leaves the defaults and is no error; so do lines that are no setting. The lines
  // of the clock are written but never read back: the clock starts at its defaults in every run of
  // the program.
  FileOutcome Load(const QString& path);
  // Writes every setting in its fixed order, the rectangle as it stands here.
  FileOutcome Save(const QString& path) const;
};

}  // namespace zentorin
