// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace zentorin {

struct VlcRecording {
  QString address;
  QString path;  // of the row's file; ".mp3" asks for a conversion
  QString file;  // that VLC writes until the recording may take its path
};

// The command line that the program gives for a recording, as it is logged. VLC 3 does not
// understand it: its chain lacks braces, and the blanks and quotes are another system's.
QString VlcCommandText(const VlcRecording& recording);

// The same for VLC 3; empty for an address that cannot be recorded. `socket`: Unix socket on which
// it listens for commands. `shown`: minimised, which needs VLC's window plugin.
QStringList VlcArguments(const VlcRecording& recording, const QString& socket, bool shown);

}  // namespace zentorin
