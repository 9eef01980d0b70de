// SPDX-License-Identifier: MIT
#include <QApplication>

#include <unistd.h>

#include "app/auto_run.h"
#include "app/list_commands.h"
#include "base/drives.h"
#include "composed_workspace.h"
#include "compositions.h"
#include "launch/desktop_opener.h"
#include "launch/process_starter.h"
#include "terminal/qt_messages.h"
#include "terminal/terminal.h"
#include "ui/dialogs/plain_text_windows.h"
#include "ui/dialogs/window_file_dialogs.h"
#include "ui/dialogs/window_messages.h"
#include "ui/frm_main.h"
#include "ui/standard_texts.h"
#include "ui/window_program.h"

namespace zentorin {

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
  opener.TellSuccessTo(workspace.board);
  AutoRun autoRun(workspace);
  ListCommands lists(workspace, dialogs);
  frmMain window({.workspace = workspace,
                  .autoRun = autoRun,
                  .lists = lists,
                  .dialogs = dialogs,
                  .toolCaptions = composed.capture.ToolCaptions()});
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
