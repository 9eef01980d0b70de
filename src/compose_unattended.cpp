// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include <unistd.h>

#include "app/command_line.h"
#include "composed_workspace.h"
#include "compositions.h"
#include "terminal/qt_messages.h"
#include "terminal/terminal.h"
#include "terminal/terminal_messages.h"
#include "terminal/terminal_opener.h"
#include "terminal/unattended_run.h"

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
