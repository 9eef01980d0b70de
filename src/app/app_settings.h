// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "base/display_clock.h"
#include "base/text_file.h"
#include "download/download_run.h"

namespace zentorin {

// What Conf.txt holds.
struct AppSettings {
  int formLeft = 130;  // the main window's normal rectangle, pixels
  int formTop = 100;
  int formRight = 812;
  int formBottom = 700;
  QString defaultSavePath;
  ClockOptions clock;
  DownloadOptions download;

  // A missing file and lines that are no setting leave the defaults. The lines of the clock are
  // written but never read back.
  Outcome Load(const QString& path);
  Outcome Save(const QString& path) const;
};

}  // namespace zentorin
