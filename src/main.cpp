// SPDX-License-Identifier: MIT
#include <QApplication>
#include <cstdio>

#include <unistd.h>

#include "app/exit_status.h"
#include "app/terminal.h"
#include "app/usage.h"
#include "base/program_folder.h"
#include "compositions.h"

namespace {

QStringList ArgumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

// Without a display the program works with no window at all: no part of Qt that draws is started. A
// platform that is named on purpose counts as a display.
bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") ||
         !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The folder, or nothing after a message when it cannot be had.
QString ProgramFolder() {
  const QString folder = zentorin::FindProgramFolder(QCoreApplication::applicationDirPath());
  if (folder.isEmpty()) {
    zentorin::Terminal(STDERR_FILENO)
        .Line(QStringLiteral("プログラムのフォルダを作成できません。環境変数 ZENTORIN_HOME で"
                             "書き込めるフォルダを指定して下さい。"));
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
  if (HasDisplay()) {
    // The program reads its arguments itself: Qt's own options are not among them.
    int onlyName = 1;
    const QApplication application(onlyName, argv);
    const QString folder = ProgramFolder();
    return folder.isEmpty() ? zentorin::kExitRefused : zentorin::RunWindow(arguments, folder);
  }
  const QCoreApplication application(argc, argv);
  const QString folder = ProgramFolder();
  return folder.isEmpty() ? zentorin::kExitRefused : zentorin::RunUnattended(arguments, folder);
}
