// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "base/text_file.h"

namespace zentorin {

// One recording, as StreamGet is asked for it.
struct StreamGetRecording {
  QString address;
  QString folder;  // a path of this system
};

// A path of this system as a Windows program sees it: the compatibility layer shows the whole
// file system as drive "Z:".
QString WindowsPath(const QString& path);

// The text of "StreamGet.ini". The keys of the modes, which belong to no section, follow the last
// one.
QString StreamGetIni(const StreamGetRecording& recording);

// Writes "StreamGet.ini" into the tool's folder and removes what the tool kept of earlier streams
// in its "inf" folder. Fails for texts that code page 932 cannot hold.
FileOutcome WriteStreamGetSettings(const QString& toolFolder, const StreamGetRecording& recording);

// The progress that the tool notes in its settings ("ASFPLAY=…"); empty when there is none yet.
QString StreamGetPlayed(const QString& toolFolder);

}  // namespace zentorin
