// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include <unistd.h>

#include "app/command_line.h"
#include "app/qt_messages.h"
#include "app/terminal.h"
#include "app/terminal_messages.h"
#include "app/terminal_opener.h"
#include "app/unattended_run.h"
#include "composed_workspace.h"
#include "compositions.h"

namespace zentorin {

int RunUnattended(const QStringList& arguments, const QString& programFolder) {
  Terminal terminal(STDERR_FILENO);
  const QtMessages qtMessages(terminal);
  TerminalMessages messages(terminal);
  TerminalOpener opener(terminal);
  ComposedWorkspace composed(messages, opener, programFolder);
  const CommandLine line = ReadArguments(arguments, composed.workspace.drives);
  UnattendedRun run(composed.workspace, terminal);
  QObject::connect(&composed.signals, &StopSignals::StopRequested, &run, &UnattendedRun::Stop);
  QObject::connect(&run, &UnattendedRun::Ended, QCoreApplication::instance(),
                   &QCoreApplication::exit);
  run.Run(line);
  return QCoreApplication::exec();
}

}  // namespace zentorin
