// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace zentorin {

// One recording, as VLC is asked for it.
struct VlcRecording {
  QString address;
  QString path;  // of the row's file; ".mp3" asks for a conversion
  QString file;  // that VLC writes until the recording may take its path
};

// The command line that the program gives for a recording, as it is logged. VLC 3 does not
// understand it: its chain lacks braces, and the blanks and quotes are another system's.
QString VlcCommandText(const VlcRecording& recording);

// The same recording in words that VLC 3 understands. `socket`: path of the Unix socket on which it
// is to listen for commands. `shown`: with a minimised window, which needs VLC's window plugin.
// Empty when the address is none that can be recorded.
QStringList VlcArguments(const VlcRecording& recording, const QString& socket, bool shown);

}  // namespace zentorin
