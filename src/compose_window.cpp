// SPDX-License-Identifier: MIT
#include <QApplication>

#include "app/auto_run.h"
#include "app/batch_notice.h"
#include "app/command_line.h"
#include "app/list_commands.h"
#include "app/stop_signals.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "base/drives.h"
#include "compositions.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "download/system_services.h"
#include "launch/desktop_opener.h"
#include "launch/installed_programs.h"
#include "launch/process_starter.h"
#include "ui/frm_main.h"
#include "ui/plain_text_windows.h"
#include "ui/window_file_dialogs.h"
#include "ui/window_messages.h"
#include "ui/window_program.h"

namespace zentorin {

int RunWindow(const QStringList& arguments, const QString& programFolder) {
  QApplication::setQuitOnLastWindowClosed(false);
  SystemClock clock;
  WindowMessages messages;
  WindowFileDialogs dialogs;
  ProcessStarter starter(XdgFolders::FromEnvironment());
  PlainTextWindows texts(dialogs, messages);
  Drives drives(programFolder);
  DesktopOpener opener(drives, starter, messages, texts);
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
  opener.TellSuccessTo(workspace.board);
  const BatchNotice notice(workspace.driver, services.Notices());
  AutoRun autoRun(workspace);
  ListCommands lists(workspace, dialogs);
  frmMain window({.workspace = workspace,
                  .autoRun = autoRun,
                  .lists = lists,
                  .dialogs = dialogs,
                  .toolCaptions = capture.ToolCaptions()});
  messages.Attach(&window, &autoRun);
  dialogs.Attach(&window);
  WindowProgram program(workspace, autoRun, window);
  const StopSignals signals;
  QObject::connect(&signals, &StopSignals::StopRequested, &program, &WindowProgram::Stop);
  QObject::connect(&program, &WindowProgram::Ended, QCoreApplication::instance(),
                   &QCoreApplication::exit, Qt::QueuedConnection);
  program.Run(arguments);
  return QApplication::exec();
}

}  // namespace zentorin
