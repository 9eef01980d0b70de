// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include <unistd.h>

#include "app/batch_notice.h"
#include "app/command_line.h"
#include "app/start_up.h"
#include "app/stop_signals.h"
#include "app/terminal.h"
#include "app/terminal_messages.h"
#include "app/terminal_opener.h"
#include "app/unattended_run.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "compositions.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "download/system_services.h"
#include "launch/installed_programs.h"

namespace zentorin {

int RunUnattended(const QStringList& arguments, const QString& programFolder) {
  Terminal terminal(STDERR_FILENO);
  SystemClock clock;
  TerminalMessages messages(terminal);
  TerminalOpener opener(terminal);
  const InstalledPrograms programs(XdgFolders::FromEnvironment());
  X11ToolWindows toolWindows;
  ExternalStreamCapture capture(programs, toolWindows);
  SystemServices services;
  const World world{.clock = clock,
                    .messages = messages,
                    .opener = opener,
                    .capture = capture,
                    .power = services.Power()};
  Workspace workspace(world, programFolder, qEnvironmentVariable("ZENTORIN_CONNECT_TO"));
  const CommandLine line = ReadArguments(arguments, workspace.drives);
  const BatchNotice notice(workspace.driver, services.Notices());
  UnattendedRun run(workspace, terminal);
  const StopSignals signals;
  QObject::connect(&signals, &StopSignals::StopRequested, &run, &UnattendedRun::Stop);
  QObject::connect(&run, &UnattendedRun::Ended, QCoreApplication::instance(),
                   &QCoreApplication::exit);
  run.Run(line);
  return QCoreApplication::exec();
}

}  // namespace zentorin
