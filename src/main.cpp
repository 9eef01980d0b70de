// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <cstdio>

#include <unistd.h>

#include "app/command_line.h"
#include "app/exit_status.h"
#include "app/stop_signals.h"
#include "app/terminal.h"
#include "app/terminal_messages.h"
#include "app/terminal_opener.h"
#include "app/unattended_run.h"
#include "app/usage.h"
#include "app/workspace.h"
#include "base/clock.h"
#include "base/program_folder.h"
#include "download/no_power_control.h"
#include "download/no_stream_capture.h"

namespace {

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

int RunUnattended(const QStringList& arguments, const QString& programFolder) {
  using namespace zentorin;
  Terminal terminal(STDERR_FILENO);
  if (programFolder.isEmpty()) {
    terminal.Line(
        QStringLiteral("プログラムのフォルダを作成できません。環境変数 ZENTORIN_HOME で"
                       "書き込めるフォルダを指定して下さい。"));
    return kExitRefused;
  }
  SystemClock clock;
  TerminalMessages messages(terminal);
  TerminalOpener opener(terminal);
  NoStreamCapture capture(messages, opener);
  NoPowerControl power;
  const World world{
      .clock = clock, .messages = messages, .opener = opener, .capture = capture, .power = power};
  Workspace workspace(world, programFolder, qEnvironmentVariable("ZENTORIN_CONNECT_TO"));
  const CommandLine line = ReadArguments(arguments, workspace.drives);
  UnattendedRun run(workspace, terminal);
  const StopSignals signals;
  QObject::connect(&signals, &StopSignals::StopRequested, &run, &UnattendedRun::Stop);
  QObject::connect(&run, &UnattendedRun::Ended, QCoreApplication::instance(),
                   &QCoreApplication::exit);
  run.Run(line);
  return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const QStringList arguments = ArgumentsOf(argc, argv);
  if (const auto answer = zentorin::PlainAnswer(arguments)) {
    std::fputs(answer->toUtf8().constData(), stdout);
    return zentorin::kExitDone;
  }
  const QCoreApplication application(argc, argv);
  return RunUnattended(arguments,
                       zentorin::FindProgramFolder(QCoreApplication::applicationDirPath()));
}
