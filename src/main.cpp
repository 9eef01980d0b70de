// SPDX-License-Identifier: MIT
#include <QApplication>
#include <chrono>
#include <cstdio>

#include <unistd.h>

#include "app/stop_signals.h"
#include "app/usage.h"
#include "base/bus_greeting.h"
#include "base/display_server.h"
#include "base/message_bus.h"
#include "base/program_folder.h"
#include "compose.h"
#include "download/run_outcome.h"
#include "terminal/terminal.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

// Tells which displays cannot be reached. Without any the program works with no window at all: no
// part of Qt that draws is started.
bool FindDisplay() {
  for (const QString& display : zentorin::DropDeadDisplays()) {
    zentorin::Terminal(STDERR_FILENO).Line(u"ディスプレイ「%1」に接続できません。"_s.arg(display));
  }
  return zentorin::HasDisplay();
}

// With a window Qt turns to the session's bus by itself, and would wait without end for one that
// says nothing. Such a bus counts as none, for the programs that are started too.
void DropSilentBus() {
  constexpr std::chrono::milliseconds kAnswerTime(1000);
  zentorin::BusGreeting greeting(zentorin::MessageBus::SessionAddress());
  if (greeting.Current() != zentorin::BusGreeting::State::Waiting) return;
  if (greeting.WaitFor(kAnswerTime) == zentorin::BusGreeting::State::Answered) return;
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

// The folder, or nothing after a message when it cannot be had.
QString ProgramFolder() {
  const QString folder = zentorin::FindProgramFolder(QCoreApplication::applicationDirPath());
  if (folder.isEmpty()) {
    zentorin::Terminal(STDERR_FILENO)
        .Line(
            u"プログラムのフォルダを作成できません。環境変数 ZENTORIN_HOME で"
            "書き込めるフォルダを指定して下さい。"_s);
  }
  return folder;
}

}  // namespace

int main(int argc, char** argv) {
  const QStringList arguments = ArgumentsOf(argc, argv);
  if (const auto answer = zentorin::PlainAnswer(arguments)) {
    std::fputs(answer->toUtf8().constData(), stdout);
    return zentorin::kExitDone;
  }
  zentorin::StopSignals::Catch();
  if (FindDisplay()) {
    DropSilentBus();
    // The program reads its arguments itself: Qt's own options are not among them.
    int onlyName = 1;
    const QApplication application(onlyName, argv);
    const QString folder = ProgramFolder();
    return folder.isEmpty() ? zentorin::kExitRefused : zentorin::RunWindow(arguments, folder);
  }
  // Without a window nobody needs GLib's event loop, which takes a third of the time of a long list
  // of small files.
  if (!qEnvironmentVariableIsSet("QT_NO_GLIB")) qputenv("QT_NO_GLIB", "1");
  const QCoreApplication application(argc, argv);
  const QString folder = ProgramFolder();
  return folder.isEmpty() ? zentorin::kExitRefused : zentorin::RunUnattended(arguments, folder);
}
