// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "base/text_file.h"

namespace zentorin {

struct StreamGetRecording {
  QString address;
  QString folder;  // a path of this system
};

// The compatibility layer shows the whole file system as drive "Z:".
QString WindowsPath(const QString& path);

// The keys of the modes, which belong to no section, follow the last one.
QString StreamGetIni(const StreamGetRecording& recording);

// Also removes what the tool kept of earlier streams in its "inf" folder. Fails for texts that code
// page 932 cannot hold.
Outcome WriteStreamGetSettings(const QString& toolFolder, const StreamGetRecording& recording);

QString StreamGetPlayed(const QString& toolFolder);  // "ASFPLAY=…"; may be empty

}  // namespace zentorin
