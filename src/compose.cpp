// SPDX-License-Identifier: MIT
#include "compose.h"

#include <QApplication>

#include <unistd.h>

#include "app/auto_run.h"
#include "app/command_line.h"
#include "app/list_commands.h"
#include "app/run_summary.h"
#include "app/stop_signals.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "base/drives.h"
#include "download/stream/external_stream_capture.h"
#include "download/stream/x11_tool_windows.h"
#include "launch/desktop_opener.h"
#include "launch/installed_programs.h"
#include "launch/process_starter.h"
#include "power/system_services.h"
#include "terminal/qt_messages.h"
#include "terminal/terminal.h"
#include "terminal/terminal_messages.h"
#include "terminal/terminal_opener.h"
#include "terminal/unattended_run.h"
#include "ui/dialogs/plain_text_windows.h"
#include "ui/dialogs/window_file_dialogs.h"
#include "ui/dialogs/window_messages.h"
#include "ui/frm_main.h"
#include "ui/standard_texts.h"
#include "ui/window_program.h"

namespace zentorin {

using namespace Qt::Literals::StringLiterals;

namespace {

// A workspace on this machine, and what both ways to run the program need around it.
struct ComposedWorkspace {
  ComposedWorkspace(MessageBoxes& messages, Opener& opener, const QString& programFolder)
      : capture(programs, toolWindows, messages, opener),
        workspace({clock, messages, opener, capture, services.Power()}, programFolder,
                  qEnvironmentVariable("ZENTORIN_CONNECT_TO")) {
    QObject::connect(&workspace.driver, &RunDriver::BatchEnded, &workspace.driver,
                     [this](const RunOutcome& outcome) {
                       services.Notices().Show(u"一括ダウンロード"_s, SummaryOf(outcome));
                     });
  }

  SystemClock clock;
  InstalledPrograms programs{XdgFolders::FromEnvironment()};
  X11ToolWindows toolWindows;
  ExternalStreamCapture capture;
  SystemServices services;
  Workspace workspace;
  StopSignals signals;
};

}  // namespace

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

int RunWindow(const QStringList& arguments, const QString& programFolder) {
  Terminal terminal(STDERR_FILENO);
  const QtMessages qtMessages(terminal);
  QApplication::setQuitOnLastWindowClosed(false);
  ShowStandardTextsInJapanese();
  WindowMessages messages;
  WindowFileDialogs dialogs;
  ProcessStarter starter(XdgFolders::FromEnvironment());
  PlainTextWindows texts(dialogs, messages);
  Drives drives(programFolder);
  DesktopOpener opener(drives, starter, messages, texts);
  ComposedWorkspace composed(messages, opener, programFolder);
  Workspace& workspace = composed.workspace;
  opener.TellSuccessTo(workspace.activity);
  AutoRun autoRun(workspace);
  ListCommands lists(workspace, dialogs);
  frmMain window({.workspace = workspace,
                  .autoRun = autoRun,
                  .lists = lists,
                  .dialogs = dialogs,
                  .toolPaths = composed.capture.ToolPaths()});
  messages.Attach(&window, &autoRun);
  dialogs.Attach(&window);
  WindowProgram program(workspace, autoRun, window);
  // The window may be gone when somebody asks what became of a power action or of the settings.
  const auto tell = [&terminal](const QString& text) { terminal.Line(text); };
  QObject::connect(&workspace.driver, &RunDriver::PowerAnswered, &program, tell);
  QObject::connect(&window, &frmMain::SettingsLost, &program, tell);
  QObject::connect(&composed.signals, &StopSignals::StopRequested, &program, &WindowProgram::Stop);
  QObject::connect(&program, &WindowProgram::Ended, QCoreApplication::instance(),
                   &QCoreApplication::exit, Qt::QueuedConnection);
  program.Run(arguments);
  return QApplication::exec();
}

}  // namespace zentorin
